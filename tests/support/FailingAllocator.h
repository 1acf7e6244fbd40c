#pragma once

#include <cstddef>

/// The operator new of a program that links this, and with it that of every library it loads: it
/// counts, and it can be told to fail. All of this for each thread on its own.
namespace support::FailingAllocator {

enum class Mode {
    ThatOne,      ///< memory is short for a moment
    FromThatOneOn ///< memory is out
};

/// Counts from 0 again, and fails at the n-th of the next allocations; n 0 just counts.
void start(std::size_t n, Mode mode);

/// Fails and counts no more.
void stop();

// Since start, until stop.

std::size_t allocations();

/// How many of them failed.
std::size_t failures();

/// Blocks allocated less blocks freed.
std::ptrdiff_t blocksLeft();

} // namespace support::FailingAllocator
