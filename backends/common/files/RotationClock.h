#pragma once

#include <ctime>
#include <string>

namespace ZOL::Backends {

/// When a log that rotates at a time of day does so. All times of day are local ones. On a day that
/// lacks the time, because the clock is put forward, the log rotates at the time that mktime makes
/// of it; on one that has it twice, once.
class RotationClock {
public:
    /// @param hour from 0 to 23
    /// @param minute from 0 to 59
    RotationClock(int hour, int minute) : hour_(hour), minute_(minute) {}

    /// The last rotation at or before a time.
    std::time_t periodStart(std::time_t at) const;

    /// The first rotation after a time.
    std::time_t nextRotation(std::time_t after) const;

private:
    /// The rotation on the local day of a time, or so many days later.
    std::time_t rotationOnDay(std::time_t at, int daysLater) const;

    /// Whether the local clock shows the time of day then, on the day of the month.
    bool isShownAt(std::time_t at, const std::tm& day) const;

    int hour_;
    int minute_;
};

/// The local day of a time: "2026-01-31".
std::string localDay(std::time_t at);

} // namespace ZOL::Backends
