#include "files/RotationClock.h"

#include <utility>
#include <vector>

#include <gtest/gtest.h>

using namespace ZOL::Backends;

namespace {

/// A local time of January 2026, when clocks are hardly put forward or back. The day may be beyond
/// the month.
std::time_t inJanuary(int day, int hour, int minute, int second = 0) {
    std::tm time{};
    time.tm_year = 2026 - 1900;
    time.tm_mday = day;
    time.tm_hour = hour;
    time.tm_min = minute;
    time.tm_sec = second;
    time.tm_isdst = -1;
    return std::mktime(&time);
}

const std::vector<std::pair<int, int>> timesOfDay{{0, 0},  {0, 1},   {2, 30}, {12, 0},
                                                  {13, 7}, {23, 58}, {23, 59}};

TEST(RotationClock, BeginsAPeriodWithTheRotation) {
    for (const auto& [hour, minute] : timesOfDay) {
        const RotationClock clock(hour, minute);
        const std::time_t rotation = inJanuary(15, hour, minute);
        EXPECT_EQ(clock.periodStart(rotation), rotation) << hour << ":" << minute;
        EXPECT_EQ(clock.periodStart(rotation + 1), rotation) << hour << ":" << minute;
        EXPECT_EQ(clock.periodStart(rotation - 1), inJanuary(14, hour, minute))
            << hour << ":" << minute;
    }
}

TEST(RotationClock, RotatesNextAfterTheTime) {
    for (const auto& [hour, minute] : timesOfDay) {
        const RotationClock clock(hour, minute);
        const std::time_t rotation = inJanuary(15, hour, minute);
        EXPECT_EQ(clock.nextRotation(rotation - 1), rotation) << hour << ":" << minute;
        EXPECT_EQ(clock.nextRotation(rotation), inJanuary(16, hour, minute))
            << hour << ":" << minute;
        EXPECT_EQ(clock.nextRotation(rotation + 1), inJanuary(16, hour, minute))
            << hour << ":" << minute;
    }
}

TEST(RotationClock, RotatesAtTheEndsOfMonthAndYear) {
    const RotationClock clock(9, 5);
    EXPECT_EQ(clock.periodStart(inJanuary(1, 9, 4, 59)), inJanuary(0, 9, 5)) << "31 December";
    EXPECT_EQ(clock.nextRotation(inJanuary(0, 9, 5)), inJanuary(1, 9, 5)) << "1 January";
    EXPECT_EQ(clock.nextRotation(inJanuary(31, 9, 5)), inJanuary(32, 9, 5)) << "1 February";
}

TEST(RotationClock, NamesTheLocalDay) {
    EXPECT_EQ(localDay(inJanuary(31, 0, 0)), "2026-01-31");
    EXPECT_EQ(localDay(inJanuary(31, 23, 59, 59)), "2026-01-31");
    EXPECT_EQ(localDay(inJanuary(32, 0, 0)), "2026-02-01");
    EXPECT_EQ(localDay(inJanuary(0, 23, 59, 59)), "2025-12-31");
}

} // namespace
