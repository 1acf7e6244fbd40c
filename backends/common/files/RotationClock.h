#pragma once

#include <ctime>
#include <string>

namespace ZOL::Backends {

/// When a log that rotates at a time of day does so. All times of day are local ones. On a day that
/// lacks the time, because the clock is put forward, the log rotates by as much later: at 03:30
/// instead of 02:30. On a day that has the time twice, it rotates at the first one.
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

    int hour_;
    int minute_;
};

/// The local day of a time: "2026-01-31".
std::string localDay(std::time_t at);

} // namespace ZOL::Backends
