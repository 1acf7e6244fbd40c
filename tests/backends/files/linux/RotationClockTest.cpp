// Rotation on the days on which the local clock is changed.

#include "files/RotationClock.h"

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "FreshProcess.h"

using namespace ZOL::Backends;

namespace {

constexpr std::time_t hour = 60 * 60;
constexpr const char* centralEurope = "CET-1CEST,M3.5.0,M10.5.0/3";
/// Put forward at midnight: that day begins at one.
constexpr const char* withoutMidnight = "<-03>3<-02>,M11.1.0/0,M2.3.0/0";

void setZone(const char* zone) {
    setenv("TZ", zone, 1);
    tzset();
}

/// Expects one rotation for each of so many days from that time on.
void expectOneRotationADay(const RotationClock& clock, std::time_t begin, int days) {
    std::time_t rotation = clock.nextRotation(begin);
    for (int i = 0; i < days; ++i) {
        const std::time_t next = clock.nextRotation(rotation);
        EXPECT_GE(next - rotation, 23 * hour) << localDay(rotation);
        EXPECT_LE(next - rotation, 25 * hour) << localDay(rotation);
        for (std::time_t at = rotation; at < next; at += hour / 4) {
            ASSERT_EQ(clock.periodStart(at), rotation) << at;
            ASSERT_EQ(clock.nextRotation(at), next) << at;
        }
        rotation = next;
    }
}

TEST(RotationClock, RotatesOnceOnADayThatLacksTheTime) {
    support::inFreshProcess([] {
        setZone(centralEurope);
        constexpr std::time_t beforeTheChange = 1774573200; // 2026-03-27 02:00 UTC
        expectOneRotationADay(RotationClock(2, 30), beforeTheChange, 5);
        expectOneRotationADay(RotationClock(0, 0), beforeTheChange, 5);
    });
}

TEST(RotationClock, RotatesOnceOnADayThatHasTheTimeTwice) {
    support::inFreshProcess([] {
        setZone(centralEurope);
        constexpr std::time_t beforeTheChange = 1792720800; // 2026-10-23 02:00 UTC
        expectOneRotationADay(RotationClock(2, 30), beforeTheChange, 5);
        expectOneRotationADay(RotationClock(0, 0), beforeTheChange, 5);
    });
}

TEST(RotationClock, RotatesOnceOnADayWithoutMidnight) {
    support::inFreshProcess([] {
        setZone(withoutMidnight);
        constexpr std::time_t beforeTheChange = 1793325600; // 2026-10-30 02:00 UTC
        expectOneRotationADay(RotationClock(0, 0), beforeTheChange, 5);
    });
}

} // namespace
