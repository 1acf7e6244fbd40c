#include "files/RotationClock.h"

#include <gtest/gtest.h>

using namespace ZOL::Backends;

namespace {

std::time_t localTime(int month, int day, int hour, int minute, int second = 0) {
    std::tm time{};
    time.tm_year = 2026 - 1900;
    time.tm_mon = month - 1;
    time.tm_mday = day;
    time.tm_hour = hour;
    time.tm_min = minute;
    time.tm_sec = second;
    time.tm_isdst = -1;
    return std::mktime(&time);
}

TEST(RotationClock, RotatesAtTheTimeOfDay) {
    const RotationClock clock(9, 30);
    const std::time_t rotation = localTime(1, 31, 9, 30);
    EXPECT_EQ(clock.nextRotation(rotation - 1), rotation);
    EXPECT_EQ(clock.nextRotation(rotation), localTime(2, 1, 9, 30));
    EXPECT_EQ(clock.periodStart(rotation - 1), localTime(1, 30, 9, 30));
    EXPECT_EQ(clock.periodStart(rotation), rotation);
    EXPECT_EQ(clock.periodStart(localTime(2, 1, 9, 29, 59)), rotation);
}

TEST(RotationClock, RotatesAtMidnight) {
    const RotationClock clock(0, 0);
    const std::time_t midnight = localTime(2, 1, 0, 0);
    EXPECT_EQ(clock.nextRotation(localTime(1, 31, 0, 0)), midnight);
    EXPECT_EQ(clock.nextRotation(localTime(1, 31, 23, 59, 59)), midnight);
    EXPECT_EQ(clock.periodStart(localTime(1, 31, 23, 59, 59)), localTime(1, 31, 0, 0));
}

TEST(RotationClock, NamesTheLocalDay) {
    EXPECT_EQ(localDay(localTime(1, 31, 0, 0)), "2026-01-31");
    EXPECT_EQ(localDay(localTime(1, 31, 23, 59, 59)), "2026-01-31");
    EXPECT_EQ(localDay(localTime(2, 1, 0, 0)), "2026-02-01");
}

} // namespace
