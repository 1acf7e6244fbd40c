// RotationClock where clocks are put forward and back. The rules are written out, as a machine may
// lack the files of the time zones.

#include "files/RotationClock.h"

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

using namespace ZOL::Backends;

namespace {

using Times = std::vector<std::time_t>;

constexpr const char* berlin = "CET-1CEST,M3.5.0,M10.5.0/3";
constexpr const char* saoPaulo = "<-03>3<-02>,M11.1.0/0,M2.3.0/0"; // as in 2018
constexpr const char* lordHowe = "<+1030>-10:30<+11>-11,M10.1.0,M4.1.0";

constexpr std::time_t hour = std::time_t{60} * 60;
constexpr std::time_t day = 24 * hour;

/// Sets the local time zone until the object is destroyed.
class ScopedTimeZone {
public:
    explicit ScopedTimeZone(const char* zone) {
        if (const char* const before = std::getenv("TZ")) {
            before_ = before;
        }
        setenv("TZ", zone, 1);
        tzset();
    }

    ~ScopedTimeZone() {
        if (before_) {
            setenv("TZ", before_->c_str(), 1);
        } else {
            unsetenv("TZ");
        }
        tzset();
    }

    ScopedTimeZone(const ScopedTimeZone&) = delete;
    ScopedTimeZone& operator=(const ScopedTimeZone&) = delete;

private:
    std::optional<std::string> before_;
};

std::time_t utc(int year, int month, int dayOfMonth, int hours = 0, int minutes = 0) {
    std::tm time{};
    time.tm_year = year - 1900;
    time.tm_mon = month - 1;
    time.tm_mday = dayOfMonth;
    time.tm_hour = hours;
    time.tm_min = minutes;
    return timegm(&time);
}

/// Checks what holds for each time of the ten days around one.
void expectOneRotationADay(const RotationClock& clock, std::time_t around) {
    for (std::time_t time = around - 5 * day; time < around + 5 * day; time += hour / 4) {
        const std::time_t start = clock.periodStart(time);
        const std::time_t next = clock.nextRotation(time);
        ASSERT_LE(start, time);
        ASSERT_GT(next, time);
        ASSERT_EQ(clock.periodStart(next), next) << "at " << time;
        ASSERT_EQ(clock.periodStart(next - 1), start) << "at " << time;
        ASSERT_EQ(clock.nextRotation(start), next) << "at " << time;
    }
}

/// Checks that each rotation of ten days is on another local day, without gaps.
void expectTenRotations(const RotationClock& clock, std::time_t firstNoon) {
    std::time_t rotation = clock.periodStart(firstNoon);
    if (localDay(rotation) != localDay(firstNoon)) {
        rotation = clock.nextRotation(rotation);
    }
    for (int days = 1; days <= 10; ++days) {
        rotation = clock.nextRotation(rotation);
        ASSERT_EQ(localDay(rotation), localDay(firstNoon + days * day)) << rotation;
    }
}

struct ClockChange {
    const char* zone;
    std::time_t time; ///< at local noon of the day
};

const std::vector<ClockChange>& clockChanges() {
    static const std::vector<ClockChange> changes{
        {berlin, utc(2026, 3, 29, 10)},   {berlin, utc(2026, 10, 25, 11)},
        {saoPaulo, utc(2018, 11, 4, 14)}, {saoPaulo, utc(2018, 2, 18, 15)},
        {lordHowe, utc(2026, 10, 4, 1)},  {lordHowe, utc(2026, 4, 5, 1, 30)},
    };
    return changes;
}

TEST(RotationClockOverClockChanges, RotatesOnceADay) {
    for (const ClockChange& change : clockChanges()) {
        const ScopedTimeZone zone(change.zone);
        for (int minutes = 0; minutes < 24 * 60; minutes += 15) {
            SCOPED_TRACE(std::string(change.zone) + " on " + localDay(change.time) + " at " +
                         std::to_string(minutes / 60) + ":" + std::to_string(minutes % 60));
            const RotationClock clock(minutes / 60, minutes % 60);
            ASSERT_NO_FATAL_FAILURE(expectOneRotationADay(clock, change.time));
            ASSERT_NO_FATAL_FAILURE(expectTenRotations(clock, change.time - 5 * day));
        }
    }
}

/// The rotations on the day of a clock change and on the days before and after it.
Times threeRotations(const RotationClock& clock, std::time_t noon) {
    const std::time_t before = clock.periodStart(noon - day);
    const std::time_t on = clock.nextRotation(before);
    return {before, on, clock.nextRotation(on)};
}

TEST(RotationClockOverClockChanges, RotatesAtTheLocalTime) {
    const ScopedTimeZone zone(berlin);
    EXPECT_EQ(threeRotations({0, 0}, utc(2026, 3, 29, 10)),
              (Times{utc(2026, 3, 27, 23), utc(2026, 3, 28, 23), utc(2026, 3, 29, 22)}));
    EXPECT_EQ(threeRotations({0, 0}, utc(2026, 10, 25, 11)),
              (Times{utc(2026, 10, 23, 22), utc(2026, 10, 24, 22), utc(2026, 10, 25, 23)}));
}

TEST(RotationClockOverClockChanges, RotatesAtTheLocalTimeIfTheClockChangesByHalfAnHour) {
    const ScopedTimeZone zone(lordHowe);
    EXPECT_EQ(threeRotations({10, 45}, utc(2026, 4, 5, 1, 30)),
              (Times{utc(2026, 4, 3, 23, 45), utc(2026, 4, 5, 0, 15), utc(2026, 4, 6, 0, 15)}));
    EXPECT_EQ(
        threeRotations({10, 15}, utc(2026, 10, 4, 1)),
        (Times{utc(2026, 10, 2, 23, 45), utc(2026, 10, 3, 23, 15), utc(2026, 10, 4, 23, 15)}));
}

TEST(RotationClockOverClockChanges, RotatesOnceOnADayThatHasTheTimeTwice) {
    const ScopedTimeZone zone(berlin);
    EXPECT_EQ(threeRotations({2, 30}, utc(2026, 10, 25, 11)),
              (Times{utc(2026, 10, 24, 0, 30), utc(2026, 10, 25, 0, 30), utc(2026, 10, 26, 1, 30)}))
        << "at the first 02:30";
}

TEST(RotationClockOverClockChanges, RotatesOnADayThatLacksTheTime) {
    const ScopedTimeZone zone(berlin);
    EXPECT_EQ(threeRotations({2, 30}, utc(2026, 3, 29, 10)),
              (Times{utc(2026, 3, 28, 1, 30), utc(2026, 3, 29, 1, 30), utc(2026, 3, 30, 0, 30)}))
        << "at 03:30";
}

TEST(RotationClockOverClockChanges, RotatesOnADayThatLacksMidnight) {
    const ScopedTimeZone zone(saoPaulo);
    EXPECT_EQ(threeRotations({0, 0}, utc(2018, 11, 4, 14)),
              (Times{utc(2018, 11, 3, 3), utc(2018, 11, 4, 3), utc(2018, 11, 5, 2)}))
        << "at 01:00, the first time of the day";
}

TEST(RotationClockOverClockChanges, IsTheSameInAnyOrderOfQuestions) {
    for (const ClockChange& change : clockChanges()) {
        const ScopedTimeZone zone(change.zone);
        for (int minutes = 0; minutes < 4 * 60; minutes += 15) {
            const RotationClock clock(minutes / 60, minutes % 60);
            clock.periodStart(change.time - 100 * day);
            const std::time_t afterWinter = clock.periodStart(change.time);
            clock.periodStart(change.time + 100 * day);
            EXPECT_EQ(clock.periodStart(change.time), afterWinter)
                << change.zone << " on " << localDay(change.time) << ", " << minutes;
        }
    }
}

} // namespace
