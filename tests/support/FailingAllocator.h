#pragma once

#include <cstddef>

/// Replaces operator new in the program that links this and in every library it loads: counts
/// allocations and lets them fail. All state is per thread.
namespace support::FailingAllocator {

enum class Mode {
    Once,      ///< that one allocation fails
    FromThenOn ///< so do all later ones
};

/// Resets the counts. The n-th allocation from now on fails; with n 0 none does.
void start(std::size_t n, Mode mode);

/// From now on no allocation fails or counts.
void stop();

// Since start, until stop.

std::size_t allocations();

/// How many of them failed.
std::size_t failures();

/// Blocks allocated less blocks freed.
std::ptrdiff_t blocksLeft();

/// During its lifetime no allocation fails or counts.
class Pause {
public:
    Pause();
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;
    ~Pause();

private:
    bool wasCounting_;
};

} // namespace support::FailingAllocator
