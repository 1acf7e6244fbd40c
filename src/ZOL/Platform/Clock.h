#pragma once

namespace ZOL::Platform {

struct LocalTime {
    int hour;        ///< 0 to 23
    int minute;      ///< 0 to 59
    int second;      ///< 0 to 59
    int millisecond; ///< 0 to 999
};

/// Returns the current local time of day.
LocalTime localTime();

/// Returns the milliseconds of the current time, 0 to 999.
unsigned int currentMillisecond();

} // namespace ZOL::Platform
