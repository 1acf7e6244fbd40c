// DailyFile in programs that are started again and again, with a clock that the test moves.

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "FreshFolder.h"
#include "Property.h"
#include "RotatedFiles.h"
#include "TestClock.h"

using namespace ZOL::Framework::GenericLogger;
namespace fs = std::filesystem;

namespace {

using Times = std::vector<std::time_t>;
using Texts = std::vector<std::string>;

constexpr const char* live = "zol.log";
constexpr const char* anyDay = ".{10}";
constexpr const char* berlin = "CET-1CEST,M3.5.0,M10.5.0/3"; // a machine may lack its name
constexpr std::time_t secondsPerDay = std::time_t{24} * 60 * 60;

/// A local time of 2026; the day may be one of the next month.
std::time_t at(int month, int day, int hour, int minute = 0, int second = 0) {
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

std::string formatted(const char* pattern, std::time_t time) {
    std::tm local{};
    localtime_r(&time, &local);
    char text[sizeof("2026-01-31 09:05:07")] = "";
    std::strftime(text, sizeof(text), pattern, &local);
    return text;
}

std::string dayOf(std::time_t time) {
    return formatted("%Y-%m-%d", time);
}

std::string lineAt(std::time_t time) {
    return "INFO [orders] " + formatted("%Y-%m-%d %H:%M:%S", time) + "\n";
}

/// A program that logs its local time at each of these times, in a process of its own. The system
/// notes the last time of them as that of the file's last write.
void runProgramAt(const Times& times) {
    const pid_t program = fork();
    ASSERT_NE(program, -1);
    if (program == 0) {
        support::TestClock::set(times.front());
        Logger::installBackend("DailyFile");
        for (const std::time_t time : times) {
            support::TestClock::set(time);
            Logger::getLogger("orders")->info(formatted("%Y-%m-%d %H:%M:%S", time).c_str());
        }
        _exit(0);
    }
    int status = -1;
    ASSERT_EQ(waitpid(program, &status, 0), program);
    ASSERT_EQ(status, 0);
    const timespec written[] = {{times.back(), 0}, {times.back(), 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, live, written, 0), 0);
}

/// What is to be in the files.
class ExpectedFiles {
public:
    /// @param keptDays 0 is no limit.
    explicit ExpectedFiles(int keptDays) : keptDays_(keptDays) {}

    void addProgram(const Times& times) {
        bool looksAtTheFolder = true; // when it opens the file, and when it rotates
        for (const std::time_t time : times) {
            const std::string day = dayOf(time);
            if (!text_.empty() && day > day_) {
                rotated_.push_back({time, day_, text_});
                text_.clear();
                looksAtTheFolder = true;
            }
            day_ = day; // also if the clock was set back
            text_ += lineAt(time);
            if (looksAtTheFolder) {
                removeExpired(time);
                looksAtTheFolder = false;
            }
        }
    }

    void expectFound() const {
        EXPECT_EQ(textOf(live), text_);
        ASSERT_EQ(filesRotatedFrom(live, anyDay).size(), rotated_.size());
        for (const Rotated& file : rotated_) {
            const Texts texts = rotatedTexts(live, file.day);
            const auto same = std::count_if( // more than one if the clock was set back
                rotated_.begin(), rotated_.end(), [&file](const Rotated& other) {
                    return other.day == file.day && other.text == file.text;
                });
            EXPECT_EQ(std::count(texts.begin(), texts.end(), file.text), same) << file.day << ":\n"
                                                                               << file.text;
        }
    }

private:
    struct Rotated {
        std::time_t time;
        std::string day;
        std::string text;
    };

    void removeExpired(std::time_t now) {
        while (keptDays_ != 0 && rotated_.size() > 1 &&
               now - rotated_.front().time > keptDays_ * secondsPerDay) {
            rotated_.erase(rotated_.begin());
        }
    }

    int keptDays_;
    std::vector<Rotated> rotated_;
    std::string day_;
    std::string text_;
};

void expectFilesOf(const std::vector<Times>& programs, int keptDays) {
    setProperty("DailyFile.pattern", "%v");
    setProperty("DailyFile.days", std::to_string(keptDays));
    testing::internal::CaptureStderr();
    ExpectedFiles files(keptDays);
    for (const Times& times : programs) {
        runProgramAt(times);
        files.addProgram(times);
        SCOPED_TRACE("at " + lineAt(times.back()));
        files.expectFound();
        if (testing::Test::HasFailure()) {
            break;
        }
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

void useTimeOfBerlin() {
    setenv("TZ", berlin, 1);
    tzset();
}

/// Two weeks of programs: each day several, some that run over midnight, and gaps of days.
std::vector<Times> twoWeeksFrom(int month, int day) {
    std::vector<Times> programs;
    for (const int later : {0, 1, 3, 4, 5, 6, 7, 8, 12, 13, 14}) {
        const int today = day + later;
        programs.push_back({at(month, today, 0), at(month, today, 1, 30)});
        programs.push_back({at(month, today, 2, 30), at(month, today, 3, 0)});
        programs.push_back(
            {at(month, today, 3, 30), at(month, today, 23, 59, 58), at(month, today + 1, 0, 0, 1)});
    }
    return programs;
}

TEST(DailyFileRestarts, KeepEachLineInTheFileOfItsDayWhenClocksArePutForward) {
    inFreshFolder([] {
        useTimeOfBerlin();
        ASSERT_EQ(at(3, 30, 0) - at(3, 29, 0), 23 * 3600);
        expectFilesOf(twoWeeksFrom(3, 23), 0);
    });
}

TEST(DailyFileRestarts, KeepEachLineInTheFileOfItsDayWhenClocksArePutBack) {
    inFreshFolder([] {
        useTimeOfBerlin();
        ASSERT_EQ(at(10, 26, 0) - at(10, 25, 0), 25 * 3600);
        expectFilesOf(twoWeeksFrom(10, 19), 0);
    });
}

TEST(DailyFileRestarts, LeaveNoOlderFileThanConfiguredWhenClocksArePutForward) {
    inFreshFolder([] {
        useTimeOfBerlin();
        expectFilesOf(twoWeeksFrom(3, 23), 3);
    });
}

TEST(DailyFileRestarts, LeaveNoOlderFileThanConfiguredWhenClocksArePutBack) {
    inFreshFolder([] {
        useTimeOfBerlin();
        expectFilesOf(twoWeeksFrom(10, 19), 3);
    });
}

TEST(DailyFileRestarts, LoseNoLineWhenTheClockIsSetBack) {
    inFreshFolder([] {
        useTimeOfBerlin();
        expectFilesOf({{at(2, 4, 12)},
                       {at(2, 5, 12)},
                       {at(2, 6, 12)},
                       {at(2, 3, 12)}, // set back while no program runs: the file goes on
                       {at(2, 3, 13)}, // the same day again
                       {at(2, 4, 12)},
                       {at(2, 5, 12)}, // the same names again
                       {at(2, 6, 12), at(2, 7, 0, 10), at(2, 6, 23, 50), at(2, 7, 0, 20)},
                       {at(2, 7, 0, 30)},
                       {at(2, 9, 12)}},
                      0);
    });
}

} // namespace
