#pragma once

namespace benchmarks {

struct WallClock {
    int hour;
    int minute;
    int second;
    int millisecond;
};

/// The local time, from the functions that the product asks on this platform.
WallClock readWallClock();

/// Beside the crisis log, on the same file system.
extern const char* const crisisFloorPath;

} // namespace benchmarks
