// DailyFile over several days, with a clock that the test moves.

#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "FreshFolder.h"
#include "Property.h"
#include "RotatedFiles.h"
#include "TestClock.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

using Texts = std::vector<std::string>;

constexpr const char* anyDay = ".{10}";

void logOnDays(int days) {
    for (int day = 0; day < days; ++day) {
        Logger::getLogger("orders")->info() << "day " << day;
        support::TestClock::advance(24);
    }
}

TEST(DailyFileDays, HaveOneFileEach) {
    inFreshFolder([] {
        setProperty("DailyFile.pattern", "%v");
        Logger::installBackend("DailyFile");
        logOnDays(3);
        EXPECT_EQ(rotatedTexts("zol.log", anyDay),
                  (Texts{"INFO [orders] day 0\n", "INFO [orders] day 1\n"}));
        EXPECT_EQ(textOf("zol.log"), "INFO [orders] day 2\n");
    });
}

/// Logs the text at a time of January or February 2026 in UTC, which is the local time of the test.
void logAt(int month, int day, int hour, int minute, int second, const char* text) {
    std::tm time{};
    time.tm_year = 2026 - 1900;
    time.tm_mon = month - 1;
    time.tm_mday = day;
    time.tm_hour = hour;
    time.tm_min = minute;
    time.tm_sec = second;
    support::TestClock::set(timegm(&time));
    Logger::getLogger("orders")->info(text);
}

void installInUtc() {
    setenv("TZ", "UTC0", 1);
    tzset();
    setProperty("DailyFile.pattern", "%v");
    Logger::installBackend("DailyFile");
}

TEST(DailyFileDays, AreAllKeptByDefault) {
    inFreshFolder([] {
        installInUtc();           // without days of 23 and 25 hours
        constexpr int days = 400; // more than a year, which would be a plausible default
        logOnDays(days);
        EXPECT_EQ(filesRotatedFrom("zol.log", anyDay).size(), static_cast<std::size_t>(days - 1));
    });
}

TEST(DailyFileDays, BeginAtMidnightByDefault) {
    inFreshFolder([] {
        installInUtc();
        logAt(1, 31, 23, 58, 30, "1");
        logAt(1, 31, 23, 59, 30, "2");
        logAt(2, 1, 0, 0, 0, "3");
        logAt(2, 1, 0, 1, 0, "4");
        logAt(2, 1, 23, 59, 30, "5");
        EXPECT_EQ(textOf("zol_2026-01-31.20260201T000000Z.000.log"),
                  "INFO [orders] 1\nINFO [orders] 2\n");
        EXPECT_EQ(textOf("zol.log"), "INFO [orders] 3\nINFO [orders] 4\nINFO [orders] 5\n");
    });
}

TEST(DailyFileDays, BeginAtTheConfiguredTime) {
    inFreshFolder([] {
        setProperty("DailyFile.hour", "23");
        setProperty("DailyFile.minute", "59");
        installInUtc();
        logAt(1, 31, 0, 0, 0, "1");
        logAt(1, 31, 23, 58, 30, "2");
        logAt(1, 31, 23, 59, 30, "3");
        logAt(2, 1, 0, 0, 0, "4");
        logAt(2, 1, 23, 58, 30, "5");
        logAt(2, 1, 23, 59, 30, "6");
        EXPECT_EQ(filesRotatedFrom("zol.log", anyDay).size(), 2U);
        EXPECT_EQ(rotatedTexts("zol.log", "2026-01-30"),
                  Texts{"INFO [orders] 1\nINFO [orders] 2\n"});
        EXPECT_EQ(rotatedTexts("zol.log", "2026-01-31"),
                  Texts{"INFO [orders] 3\nINFO [orders] 4\nINFO [orders] 5\n"});
        EXPECT_EQ(textOf("zol.log"), "INFO [orders] 6\n");
    });
}

TEST(DailyFileDays, BeyondTheConfiguredNumberAreRemoved) {
    inFreshFolder([] {
        setProperty("DailyFile.days", "2");
        installInUtc();
        logOnDays(6);
        EXPECT_EQ(
            rotatedTexts("zol.log", anyDay),
            (Texts{"INFO [orders] day 2\n", "INFO [orders] day 3\n", "INFO [orders] day 4\n"}))
            << "the first of them was renamed exactly two days ago";
        EXPECT_EQ(textOf("zol.log"), "INFO [orders] day 5\n");
    });
}

} // namespace
