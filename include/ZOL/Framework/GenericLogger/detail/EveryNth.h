#pragma once

#include <atomic>
#include <cstdint>
#include <optional>
#include <type_traits>

#include "ZOL/Framework/GenericLogger/detail/ExecutionCounter.h"

namespace ZOL::Framework::GenericLogger::detail {

/// The state of a ZOL_LOG_EVERY_N statement: of its executions, numbered from 1, it logs 1, 1 + n,
/// 1 + 2n and so on.
class EveryNth {
public:
    /// Counts an execution. Returns the number of executions suppressed since the last line, or
    /// nothing if this execution is suppressed too. An n below 1 is taken as 1.
    template <typename Integer>
    std::optional<std::uint64_t> execute(Integer n) {
        static_assert(std::is_integral_v<Integer>, "ZOL_LOG_EVERY_N needs an integer");
        const std::uint64_t step = n > 1 ? static_cast<std::uint64_t>(n) : 1;
        return log(count(step), step);
    }

    // The two parts of execute. Other threads may count and log in between.

    struct Execution {
        std::uint64_t last;   ///< the last execution that had logged before this one was counted
        std::uint64_t number; ///< another one may have the same number
    };

    Execution count(std::uint64_t step) {
        const std::uint64_t last = last_.load(std::memory_order_relaxed);
        return {last, executions_.addUpTo(after(last, step))};
    }

    std::optional<std::uint64_t> log(Execution execution, std::uint64_t step) {
        auto [last, executed] = execution;
        while (executed >= after(last, step)) {
            const std::uint64_t next = isNew(step) ? executed : after(last, step);
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
    // If n has changed, the line reports all that were suppressed, and the steps begin here.
    bool isNew(std::uint64_t step) {
        const std::uint64_t known = step_.exchange(step, std::memory_order_relaxed);
        return known != step && known != 0;
    }

    static std::uint64_t after(std::uint64_t last, std::uint64_t step) {
        return last == 0 ? 1 : last + step;
    }

    ExecutionCounter executions_;
    std::atomic<std::uint64_t> step_{0}; // the n of the last line, or 0
    std::atomic<std::uint64_t> last_{0}; // the number of the last execution that logged, or 0
};

} // namespace ZOL::Framework::GenericLogger::detail
