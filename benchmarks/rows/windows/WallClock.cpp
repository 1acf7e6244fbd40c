#include "../WallClock.h"

#include <windows.h>

namespace benchmarks {

const char* const crisisFloorPath = "C:\\zol-benchmark-floor.log";

WallClock readWallClock() {
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    return {now.wHour, now.wMinute, now.wSecond, now.wMilliseconds};
}

} // namespace benchmarks
