#include "files/RotationClock.h"

#include <spdlog/details/os.h>
#include <spdlog/fmt/fmt.h>

namespace ZOL::Backends {

namespace {

constexpr std::time_t secondsPerHour = 60 * 60;

} // namespace

bool RotationClock::isShownAt(std::time_t at, const std::tm& day) const {
    const std::tm local = spdlog::details::os::localtime(at);
    return local.tm_mday == day.tm_mday && local.tm_hour == hour_ && local.tm_min == minute_;
}

std::time_t RotationClock::rotationOnDay(std::time_t at, int daysLater) const {
    std::tm day = spdlog::details::os::localtime(at);
    day.tm_mday += daysLater;
    day.tm_hour = hour_;
    day.tm_min = minute_;
    day.tm_sec = 0;
    day.tm_isdst = -1;
    std::tm shown = day;
    const std::time_t rotation = std::mktime(&shown);
    if (shown.tm_hour != hour_ || shown.tm_min != minute_) {
        // The clock is put forward over this time. What mktime makes of it then depends on what it
        // was asked before, unless it is told.
        day.tm_isdst = 0;
        return std::mktime(&day);
    }
    for (const std::time_t putBack : {secondsPerHour, secondsPerHour / 2}) {
        if (isShownAt(rotation - putBack, shown)) {
            return rotation - putBack; // the clock shows the time twice
        }
    }
    return rotation;
}

std::time_t RotationClock::periodStart(std::time_t at) const {
    const std::time_t today = rotationOnDay(at, 0);
    return today <= at ? today : rotationOnDay(at, -1);
}

std::time_t RotationClock::nextRotation(std::time_t after) const {
    const std::time_t today = rotationOnDay(after, 0);
    return today > after ? today : rotationOnDay(after, 1);
}

std::string localDay(std::time_t at) {
    const std::tm day = spdlog::details::os::localtime(at);
    return fmt::format("{:04}-{:02}-{:02}", day.tm_year + 1900, day.tm_mon + 1, day.tm_mday);
}

} // namespace ZOL::Backends
