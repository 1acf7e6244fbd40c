#pragma once

namespace support {

/// While it lives, every second of the wall clock stands at that nanosecond for the whole process.
class FixedClock {
public:
    explicit FixedClock(long nanosecond);
    FixedClock(const FixedClock&) = delete;
    FixedClock& operator=(const FixedClock&) = delete;
    ~FixedClock();
};

} // namespace support
