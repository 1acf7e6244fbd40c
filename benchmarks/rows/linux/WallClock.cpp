#include "../WallClock.h"

#include <ctime>

namespace benchmarks {

const char* const crisisFloorPath = "/var/log/zol-benchmark-floor.log";

WallClock readWallClock() {
    constexpr long nanosecondsPerMillisecond = 1000000;
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    tm local = {};
    localtime_r(&now.tv_sec, &local);
    return {local.tm_hour, local.tm_min, local.tm_sec,
            static_cast<int>(now.tv_nsec / nanosecondsPerMillisecond)};
}

} // namespace benchmarks
