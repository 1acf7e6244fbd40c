#pragma once

#include <atomic>
#include <cstdint>

namespace ZOL::Framework::GenericLogger::detail {

/// The state of a ZOL_LOG_FIRST_N or ZOL_LOG_ONCE statement, which logs its first n executions.
class FirstN {
public:
    /// Returns whether all later executions are suppressed. They need not be counted.
    bool isUsedUp() const { return usedUp_.load(std::memory_order_relaxed); }

    /// Counts an execution and returns whether it logs.
    bool execute(long long n) {
        const long long earlier = executions_.fetch_add(1, std::memory_order_relaxed);
        if (earlier + 1 >= n) {
            usedUp_.store(true, std::memory_order_relaxed);
        }
        return earlier < n;
    }

private:
    std::atomic<long long> executions_{0};
    std::atomic<bool> usedUp_{false};
};

} // namespace ZOL::Framework::GenericLogger::detail
