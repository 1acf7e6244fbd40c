#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "FailingAllocator.h"

namespace support {

namespace FailingAllocator {

/// The name of a test's parameter.
inline const char* nameOf(Mode mode) {
    return mode == Mode::Once ? "Once" : "FromThenOn";
}

inline void PrintTo(Mode mode, std::ostream* out) {
    *out << nameOf(mode);
}

} // namespace FailingAllocator

/// Longer than what any string holds within itself, so that every copy of it allocates.
constexpr const char* longText = "a text that is longer than what a string holds within itself";

/// A test that runs in each of the ways in which memory can fail.
class OutOfMemory : public testing::TestWithParam<FailingAllocator::Mode> {
protected:
    using Action = std::function<void()>;

    /// What came of one attempt at an operation, whose n-th allocation failed if it got that far.
    struct Outcome {
        bool failed;               ///< an allocation failed
        bool threwBadAlloc;        ///< and nothing else got out
        std::ptrdiff_t blocksLeft; ///< allocated and not freed
    };

    Outcome attempt(std::size_t n, const Action& operation) const;

    /// Runs the operation again and again, with the first allocation failing, then with the second
    /// and so on, until it gets by without a failure. Each failed attempt must end with
    /// std::bad_alloc and leave that many blocks; then afterFailure has its say. The number of the
    /// failed attempts.
    std::size_t sweep(
        const Action& operation, const Action& afterFailure = [] {},
        std::ptrdiff_t blocksLeft = 0) const;

    static constexpr std::ptrdiff_t anyNumber = std::numeric_limits<std::ptrdiff_t>::max();

    /// Runs it on another thread; ends the program if that waits for ever, for a lock say.
    static void onAnotherThread(const Action& action);

    /// A name that no other test has, longer than what a string holds within itself.
    static std::string uniqueName();

    /// How many allocations the action makes on this thread.
    static std::size_t allocationsOf(const Action& action);
};

std::string modeName(const testing::TestParamInfo<FailingAllocator::Mode>& info);

} // namespace support

#define ZOL_INSTANTIATE_OUT_OF_MEMORY(suite)                                                       \
    INSTANTIATE_TEST_SUITE_P(, suite,                                                              \
                             testing::Values(support::FailingAllocator::Mode::Once,                \
                                             support::FailingAllocator::Mode::FromThenOn),         \
                             support::modeName)
