#pragma once

namespace benchmarks {

struct WallClock {
    int hour;
    int minute;
    int second;
    int millisecond;
};

/// The local time, from the functions that the product uses on this platform.
WallClock readWallClock();

/// A file in the folder of the crisis log.
extern const char* const crisisFloorPath;

} // namespace benchmarks
