#include "ZOL/Platform/Clock.h"

#include <ctime>

namespace ZOL::Platform {

namespace {

constexpr long nanosecondsPerMillisecond = 1000000;

timespec currentTime() {
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    return now;
}

} // namespace

LocalTime localTime() {
    const timespec now = currentTime();
    tm local = {};
    localtime_r(&now.tv_sec, &local);
    return {local.tm_hour, local.tm_min, local.tm_sec,
            static_cast<int>(now.tv_nsec / nanosecondsPerMillisecond)};
}

unsigned int currentMillisecond() {
    return static_cast<unsigned int>(currentTime().tv_nsec / nanosecondsPerMillisecond);
}

} // namespace ZOL::Platform
