#include "files/RotationClock.h"

#include <algorithm>
#include <optional>

#include <spdlog/details/os.h>
#include <spdlog/fmt/fmt.h>

namespace ZOL::Backends {

namespace {

constexpr std::time_t noTime = -1; // what mktime returns for a time that it cannot represent

/// The time of a local one: the first of two, and the later one that mktime makes of a time that
/// the day lacks. Without a hint whether it is summer time, mktime of the GNU C library decides
/// these cases by the calls before, so that the same question gets different answers.
std::time_t timeOf(const std::tm& local) {
    std::optional<std::time_t> first;
    std::time_t latest = noTime;
    for (const int summerTime : {-1, 0, 1}) {
        std::tm normalized = local;
        normalized.tm_isdst = summerTime;
        const std::time_t time = std::mktime(&normalized);
        latest = std::max(latest, time);
        const bool isAsAsked =
            normalized.tm_hour == local.tm_hour && normalized.tm_min == local.tm_min;
        if (time != noTime && isAsAsked) {
            first = std::min(first.value_or(time), time);
        }
    }
    return first.value_or(latest);
}

} // namespace

std::time_t RotationClock::rotationOnDay(std::time_t at, int daysLater) const {
    std::tm day = spdlog::details::os::localtime(at);
    day.tm_mday += daysLater;
    day.tm_hour = hour_;
    day.tm_min = minute_;
    day.tm_sec = 0;
    return timeOf(day);
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
