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

/// Longer than the small-string buffer, so that every copy allocates.
constexpr const char* longText = "a text that is longer than what a string holds within itself";

/// A test that runs with each Mode.
class OutOfMemory : public testing::TestWithParam<FailingAllocator::Mode> {
protected:
    using Action = std::function<void()>;

    /// The result of an operation whose n-th allocation failed, if it made that many.
    struct Outcome {
        bool failed;               ///< an allocation failed
        bool threwBadAlloc;        ///< and no other exception
        std::ptrdiff_t blocksLeft; ///< allocated and not freed
    };

    Outcome attempt(std::size_t n, const Action& operation) const;

    /// Runs the operation with the first allocation failing, then with the second and so on, until
    /// none fails. Each failed attempt must throw std::bad_alloc and leave that many blocks; then
    /// afterFailure is called. Returns the number of failed attempts.
    std::size_t sweep(
        const Action& operation, const Action& afterFailure = [] {},
        std::ptrdiff_t blocksLeft = 0) const;

    static constexpr std::ptrdiff_t anyNumber = std::numeric_limits<std::ptrdiff_t>::max();

    /// Runs it on another thread; aborts the program if that deadlocks.
    static void onAnotherThread(const Action& action);

    /// A name that no other test has, longer than the small-string buffer.
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
