#pragma once

#include <atomic>
#include <cstdint>
#include <type_traits>

namespace ZOL::Framework::GenericLogger::detail {

/// The state of a ZOL_LOG_FIRST_N or ZOL_LOG_ONCE statement, which logs its first n executions.
class FirstN {
public:
    /// Returns whether all later executions are suppressed. They need not be counted.
    bool isUsedUp() const { return usedUp_.load(std::memory_order_relaxed); }

    /// Counts an execution and returns whether it logs.
    template <typename Integer>
    bool execute(Integer n) {
        static_assert(std::is_integral_v<Integer>, "ZOL_LOG_FIRST_N needs an integer");
        return countExecution(n > 0 ? static_cast<std::uint64_t>(n) : 0);
    }

private:
    bool countExecution(std::uint64_t n) {
        const std::uint64_t execution = executions_.fetch_add(1, std::memory_order_relaxed) + 1;
        if (execution >= n) {
            usedUp_.store(true, std::memory_order_relaxed);
        }
        return execution <= n;
    }

    std::atomic<std::uint64_t> executions_{0};
    std::atomic<bool> usedUp_{false};
};

} // namespace ZOL::Framework::GenericLogger::detail
