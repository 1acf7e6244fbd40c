#pragma once

#include <atomic>
#include <cstdint>
#include <optional>

#include "ZOL/Framework/GenericLogger/detail/ExecutionCounter.h"

namespace ZOL::Framework::GenericLogger::detail {

/// The state of a ZOL_LOG_EVERY_N statement: of its executions, numbered from 1, it logs 1, 1 + n,
/// 1 + 2n and so on.
class EveryNth {
public:
    /// Counts an execution. Returns the number of executions suppressed since the last line, or
    /// nothing if this execution is suppressed too. An n below 1 is taken as 1.
    std::optional<std::uint64_t> execute(long long n) {
        const std::uint64_t step = n > 1 ? static_cast<std::uint64_t>(n) : 1;
        std::uint64_t last = last_.load(std::memory_order_relaxed);
        std::uint64_t executed = executions_.addUpTo(after(last, step));
        while (executed >= after(last, step)) {
            std::uint64_t next = after(last, step);
            if (executed - next > maxLate) {
                next += (executed - next) / step * step;
            }
            if (last_.compare_exchange_weak(last, next)) {
                return next - last - 1;
            }
            // A later execution of another thread has logged in place of this one. This one logs
            // in place of the later one, if that was to log too.
            executed = executions_.sum();
        }
        return std::nullopt;
    }

private:
    // There are never more executions between counting and logging at the same time. If a line is
    // later than this, n has become smaller, and the line reports all that were suppressed.
    static constexpr std::uint64_t maxLate = 1000;

    static std::uint64_t after(std::uint64_t last, std::uint64_t step) {
        return last == 0 ? 1 : last + step;
    }

    ExecutionCounter executions_;
    std::atomic<std::uint64_t> last_{0}; // the number of the last execution that logged, or 0
};

} // namespace ZOL::Framework::GenericLogger::detail
