#pragma once

#include <atomic>
#include <cstdint>

#include "ZOL/Framework/GenericLogger/detail/ThreadToken.h"

namespace ZOL::Framework::GenericLogger::detail {

/// Counts executions of one statement by any threads. No execution is missing from the sum, but a
/// sum may not yet contain those that other threads are counting at the same time.
///
/// A locked instruction takes several times as long as the rest of a statement that logs nothing.
/// Therefore the first thread that counts has a counter that only it writes, without such an
/// instruction. All other threads share the second counter.
class ExecutionCounter {
public:
    constexpr ExecutionCounter() = default;
    ExecutionCounter(const ExecutionCounter&) = delete;
    ExecutionCounter& operator=(const ExecutionCounter&) = delete;

    /// Adds one execution and returns the sum.
    std::uint64_t add() { return isFirstThread() ? addFirst() : addOther(); }

    /// Adds one execution and returns the sum. Of all executions that are added at the same time
    /// and reach the limit together, at least one gets a sum that is not below the limit.
    std::uint64_t addUpTo(std::uint64_t limit) {
        if (!isFirstThread()) {
            return addOther();
        }
        const std::uint64_t sum = addFirst();
        return sum + margin < limit ? sum : sumAfterFirst();
    }

    std::uint64_t sum() const {
        return first_.load(std::memory_order_relaxed) + others_.load(std::memory_order_relaxed);
    }

private:
    // The processor may delay the store of addFirst until after the load. The other threads cannot
    // add so many executions in that time.
    static constexpr std::uint64_t margin = 32;

    bool isFirstThread() {
        const ThreadToken thread = thisThread();
        ThreadToken first = firstThread_.load(std::memory_order_relaxed);
        return first == thread || (first == 0 && firstThread_.compare_exchange_strong(
                                                     first, thread, std::memory_order_relaxed));
    }

    std::uint64_t addFirst() {
        const std::uint64_t first = first_.load(std::memory_order_relaxed) + 1;
        first_.store(first, std::memory_order_relaxed);
        std::atomic_signal_fence(std::memory_order_seq_cst);
        return first + others_.load(std::memory_order_relaxed);
    }

    // Of this and addOther, the later one in the order of the locked instructions sees both.
    std::uint64_t sumAfterFirst() {
        return first_.fetch_add(0, std::memory_order_seq_cst) +
               others_.load(std::memory_order_seq_cst);
    }
    std::uint64_t addOther() {
        return others_.fetch_add(1, std::memory_order_seq_cst) + 1 +
               first_.load(std::memory_order_seq_cst);
    }

    std::atomic<ThreadToken> firstThread_{0};
    std::atomic<std::uint64_t> first_{0};
    std::atomic<std::uint64_t> others_{0};
};

} // namespace ZOL::Framework::GenericLogger::detail
