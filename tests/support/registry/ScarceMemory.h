#pragma once

#include <cstddef>

/// The operator new of a program that links this can be told to fail; for each thread on its own.
/// What the simulated registry allocates never fails and is not counted: it is not the program's.
namespace support::ScarceMemory {

enum class Kind {
    ForAMoment, ///< that one allocation fails
    FromThenOn  ///< so do all behind it
};

/// Counts from 0 again, and fails at the n-th of the next allocations; n 0 just counts.
void start(std::size_t n, Kind kind);

/// Fails and counts no more. Tells how many allocations there were since start.
std::size_t stop();

/// Neither fails nor counts while one of these lives.
class Pause {
public:
    Pause();
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;
    ~Pause();

private:
    bool wasActive_;
};

} // namespace support::ScarceMemory
