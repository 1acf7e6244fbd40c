#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <optional>

#include "ZOL/Framework/GenericLogger/detail/ExecutionCounter.h"

namespace ZOL::Framework::GenericLogger::detail {

/// The state of a ZOL_LOG_EVERY statement, which logs if the interval has passed since its last
/// line.
class EveryInterval {
public:
    /// Returns the number of executions suppressed since the last line, or nothing if this
    /// execution is suppressed too. An interval may be zero or negative: then each execution logs.
    template <typename Rep, typename Period>
    std::optional<std::uint64_t> execute(std::chrono::duration<Rep, Period> interval) {
        return execute(nanoseconds(interval), now());
    }

    /// The same for a given time; both are in nanoseconds.
    std::optional<std::uint64_t> execute(std::int64_t interval, std::int64_t now) {
        std::int64_t last = last_.load(std::memory_order_relaxed);
        while (last == never || interval <= 0 || now - last >= interval) {
            if (last_.compare_exchange_weak(last, now, std::memory_order_relaxed)) {
                return takeSuppressed();
            }
        }
        suppressed_.add();
        return std::nullopt;
    }

    /// Returns 0 for a negative interval, and the largest number for one that is longer. As an
    /// integer, many hours would overflow.
    template <typename Rep, typename Period>
    static std::int64_t nanoseconds(std::chrono::duration<Rep, Period> interval) {
        const double count = std::chrono::duration<double, std::nano>(interval).count();
        return count < longest ? static_cast<std::int64_t>(count > 0 ? count : 0) : INT64_MAX;
    }

private:
    static constexpr std::int64_t never = INT64_MIN;
    static constexpr double longest = 9.2e18; // nanoseconds, 292 years

    static std::int64_t now() {
        return std::chrono::duration_cast<std::chrono::nanoseconds>(
                   std::chrono::steady_clock::now().time_since_epoch())
            .count();
    }

    std::uint64_t takeSuppressed() {
        const std::uint64_t suppressed = suppressed_.sum();
        std::uint64_t reported = reported_.load(std::memory_order_relaxed);
        while (reported < suppressed) {
            if (reported_.compare_exchange_weak(reported, suppressed, std::memory_order_relaxed)) {
                return suppressed - reported;
            }
        }
        return 0; // a later line of another thread was faster
    }

    std::atomic<std::int64_t> last_{never};
    ExecutionCounter suppressed_;
    std::atomic<std::uint64_t> reported_{0}; // how many of suppressed_ were in a line
};

} // namespace ZOL::Framework::GenericLogger::detail
