// Flags of a pattern that depend on the system: threads, processes and time zones.

#include "Pattern.h"

#include <cerrno> // program_invocation_short_name
#include <cstdlib>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "PatternLine.h"
#include "Property.h"
#include "RecordingSink.h"

using namespace ZOL::Backends;
using namespace std::chrono_literals;

namespace {

TEST(PatternOfProcess, HasTheNumbersOfTheThreadAndTheProcess) {
    const PatternLine pattern("%t %P");
    const auto expected = [] {
        return std::to_string(gettid()) + " " + std::to_string(getpid());
    };
    EXPECT_EQ(pattern.at(exampleTime()), expected());
    std::thread([&] { EXPECT_EQ(pattern.at(exampleTime()), expected()); }).join();
}

TEST(PatternOfProcess, HasTheNumbersOfAChildProcessAfterFork) {
    const PatternLine pattern("%t %P");
    pattern.at(exampleTime());
    const pid_t child = fork();
    if (child == 0) {
        const std::string number = std::to_string(getpid());
        _exit(pattern.at(exampleTime()) == number + " " + number ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

TEST(PatternOfProcess, HasTheNameOfTheMachine) {
    char name[256] = "";
    ASSERT_EQ(gethostname(name, sizeof(name)), 0);
    EXPECT_EQ(PatternLine("%W").at(exampleTime()), name);
}

TEST(PatternOfProcess, HasTheNameOfTheProgramAsOneWord) {
    char name[] = "my shop\x1B";
    char* const before = std::exchange(program_invocation_short_name, name);
    const PatternLine pattern("%N");
    program_invocation_short_name = before;
    EXPECT_EQ(pattern.at(exampleTime()), "my_shop\\x1B");
}

class PatternInTimeZone : public testing::Test {
protected:
    void SetUp() override {
        const char* const before = std::getenv("TZ");
        hadZone_ = before != nullptr;
        before_ = hadZone_ ? before : "";
    }

    void TearDown() override {
        if (hadZone_) {
            setZone(before_.c_str());
        } else {
            unsetenv("TZ");
            tzset();
        }
    }

    static void setZone(const char* zone) {
        setenv("TZ", zone, 1);
        tzset();
    }

    static std::string line(spdlog::pattern_time_type timeType,
                            std::chrono::system_clock::time_point time) {
        return PatternLine("%Y-%m-%dT%H:%M:%S%z", timeType).at(time);
    }

    static constexpr auto local = spdlog::pattern_time_type::local;
    static constexpr auto utc = spdlog::pattern_time_type::utc;

private:
    bool hadZone_ = false;
    std::string before_;
};

TEST_F(PatternInTimeZone, WritesLocalTimeWithItsOffset) {
    setZone("IST-5:30"); // the sign of a POSIX time zone is the other way round
    EXPECT_EQ(line(local, exampleTime()), "2026-01-31T14:35:07+05:30");
    setZone("NST3:30");
    EXPECT_EQ(line(local, exampleTime()), "2026-01-31T05:35:07-03:30");
    setZone("XXX0:01");
    EXPECT_EQ(line(local, exampleTime()), "2026-01-31T09:04:07-00:01");
    setZone("UTC0");
    EXPECT_EQ(line(local, exampleTime()), "2026-01-31T09:05:07+00:00");
}

TEST_F(PatternInTimeZone, WritesUtcWithoutAnOffset) {
    for (const char* zone : {"IST-5:30", "NST3:30"}) {
        setZone(zone);
        EXPECT_EQ(line(utc, exampleTime()), "2026-01-31T09:05:07+00:00");
    }
}

TEST_F(PatternInTimeZone, HasTheOffsetOfADayThatIsAnotherOneInUtc) {
    const auto lastHour = std::chrono::system_clock::from_time_t(1798761540); // 2026-12-31 23:59
    setZone("LINT-14");
    EXPECT_EQ(line(local, lastHour), "2027-01-01T13:59:00+14:00");
    setZone("BIT12");
    EXPECT_EQ(line(local, lastHour), "2026-12-31T11:59:00-12:00");
    EXPECT_EQ(line(local, lastHour + 1min), "2026-12-31T12:00:00-12:00");
}

TEST_F(PatternInTimeZone, ChangesTheOffsetInTheSecondInWhichSummerTimeBegins) {
    setZone("CET-1CEST,M3.5.0,M10.5.0/3");
    const auto lastSecond = std::chrono::system_clock::from_time_t(1774745999);
    const PatternLine pattern("%H:%M:%S%z", local);
    EXPECT_EQ(pattern.at(lastSecond), "01:59:59+01:00");
    EXPECT_EQ(pattern.at(lastSecond + 1s), "03:00:00+02:00");
}

TEST_F(PatternInTimeZone, IsThatOfTheSettingTime) {
    setZone("NZST-12");
    const auto log = [](const char* time) {
        setProperty("Test.pattern", "%z %H");
        setProperty("Test.time", time);
        std::vector<RecordedLine> lines;
        recordingBackend(lines)->createChannel("orders")->log({}, "");
        ZOL::Framework::Framework::propertyManager()->clearProperty(support::wide("Test.pattern"));
        ZOL::Framework::Framework::propertyManager()->clearProperty(support::wide("Test.time"));
        return lines.at(0).line;
    };
    const std::string here = log("local");
    const std::string universal = log("UTC");
    EXPECT_EQ(here.substr(0, 7), "+12:00 ");
    EXPECT_EQ(universal.substr(0, 7), "+00:00 ");
    EXPECT_NE(here.substr(7), universal.substr(7));
}

TEST_F(PatternInTimeZone, ChangesWithTheSettingTimeOfABackEndThatIsInstalledAgain) {
    setZone("NZST-12");
    setProperty("Test.pattern", "%z");
    setProperty("Test.time", "local");
    std::vector<RecordedLine> lines;
    const auto backend = recordingBackend(lines);
    backend->createChannel("orders")->log({}, "");
    setProperty("Test.time", "utc");
    backend->update(Settings("Test"));
    backend->createChannel("orders")->log({}, "");
    ZOL::Framework::Framework::propertyManager()->clearProperty(support::wide("Test.pattern"));
    ZOL::Framework::Framework::propertyManager()->clearProperty(support::wide("Test.time"));
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].line, "+12:00");
    EXPECT_EQ(lines[1].line, "+00:00");
}

} // namespace
