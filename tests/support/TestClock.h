#pragma once

#include <ctime>

/// Changes the wall clock that every module of this process reads. The program must export its
/// symbols (ENABLE_EXPORTS).
namespace support::TestClock {

/// Moves the clock forward.
void advance(int hours);

/// Sets the clock, which then runs on.
void set(std::time_t time);

/// During its lifetime the clock shows this nanosecond of every second.
class FixedNanosecond {
public:
    explicit FixedNanosecond(long nanosecond);
    FixedNanosecond(const FixedNanosecond&) = delete;
    FixedNanosecond& operator=(const FixedNanosecond&) = delete;
    ~FixedNanosecond();
};

} // namespace support::TestClock
