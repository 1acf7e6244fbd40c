// RotatingLog with times that the tests give.

#include "files/RotatingLog.h"

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "FreshFolder.h"
#include "HeldFile.h"
#include "RotatedFiles.h"

using namespace ZOL::Backends;
using namespace std::chrono_literals;
namespace fs = std::filesystem;

namespace {

using Texts = std::vector<std::string>;
using Clock = RotatingLog::Clock;

/// 2026-01-31 09:05:07 UTC.
Clock::time_point start() {
    return Clock::from_time_t(1769850307);
}

/// A local time of January or February 2026.
Clock::time_point localTime(int month, int day, int hour, int minute = 0) {
    std::tm time{};
    time.tm_year = 2026 - 1900;
    time.tm_mon = month - 1;
    time.tm_mday = day;
    time.tm_hour = hour;
    time.tm_min = minute;
    time.tm_isdst = -1;
    return Clock::from_time_t(std::mktime(&time));
}

RotatingLogSettings withSize(std::uint64_t maxBytes) {
    RotatingLogSettings settings;
    settings.path = "zol.log";
    settings.maxBytes = maxBytes;
    return settings;
}

RotatingLogSettings daily() {
    RotatingLogSettings settings = withSize(0);
    settings.clock = RotationClock(0, 0);
    settings.hasDayInName = true;
    return settings;
}

Texts filesInFolder() {
    Texts names;
    for (const auto& entry : fs::directory_iterator(".")) {
        if (entry.path().extension() != ".lock") {
            names.push_back(entry.path().filename().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::uint64_t bytesInFolder() {
    std::uint64_t bytes = 0;
    for (const std::string& name : filesInFolder()) {
        bytes += fs::file_size(name);
    }
    return bytes;
}

/// All that has been written, oldest first.
std::string allText() {
    std::string text;
    for (const std::string& rotated : rotatedTexts("zol.log")) {
        text += rotated;
    }
    return text + textOf("zol.log");
}

std::string numbered(int begin, int end) {
    std::string lines;
    for (int i = begin; i < end; ++i) {
        lines += "line " + std::to_string(i) + "\n";
    }
    return lines;
}

/// What a write throws.
std::string failureOf(RotatingLog& log, Clock::time_point now) {
    try {
        log.write("line\n", now);
    } catch (const LogFileError& error) {
        return error.what();
    }
    return "";
}

class RotatingLogTest : public testing::Test {
protected:
    /// Runs the body in an empty folder, and expects exactly these reports of it.
    static void inFolder(const std::function<void()>& body, const std::string& reports = "") {
        inFreshFolder([&] {
            testing::internal::CaptureStderr();
            body();
            EXPECT_EQ(testing::internal::GetCapturedStderr(), reports);
        });
    }
};

TEST_F(RotatingLogTest, OpensNothingBeforeTheFirstLine) {
    inFolder([] {
        RotatingLog log("Test", withSize(100));
        EXPECT_EQ(filesInFolder(), Texts{});
        log.write("x\n", start());
        EXPECT_EQ(filesInFolder(), Texts{"zol.log"});
    });
}

TEST_F(RotatingLogTest, RotatesBeforeALineThatWouldExceedTheSize) {
    inFolder([] {
        RotatingLog log("Test", withSize(10));
        log.write("1234\n", start());
        log.write("5678\n", start());
        EXPECT_EQ(textOf("zol.log"), "1234\n5678\n") << "exactly the size";
        log.write("\n", start());
        EXPECT_EQ(textOf("zol.20260131T090507Z.000.log"), "1234\n5678\n");
        EXPECT_EQ(textOf("zol.log"), "\n");
    });
}

TEST_F(RotatingLogTest, WritesALineThatIsLongerThanTheSizeWhole) {
    inFolder([] {
        RotatingLog log("Test", withSize(3));
        log.write("longer\n", start());
        log.write("longer still\n", start());
        EXPECT_EQ(rotatedTexts("zol.log"), Texts{"longer\n"}) << "no empty file was rotated";
        EXPECT_EQ(textOf("zol.log"), "longer still\n");
    });
}

TEST_F(RotatingLogTest, HasNoLimitWithoutASize) {
    inFolder([] {
        RotatingLog log("Test", withSize(0));
        log.write(std::string(100000, 'x') + "\n", start());
        log.write("x\n", start() + 24h * 400);
        EXPECT_EQ(filesInFolder(), Texts{"zol.log"});
    });
}

TEST_F(RotatingLogTest, CountsTheFilesOfASecond) {
    inFolder([] {
        RotatingLog log("Test", withSize(1));
        for (const char* line : {"1\n", "2\n", "3\n"}) {
            log.write(line, start());
        }
        log.write("4\n", start() + 1s);
        EXPECT_EQ(filesInFolder(),
                  (Texts{"zol.20260131T090507Z.000.log", "zol.20260131T090507Z.001.log",
                         "zol.20260131T090508Z.000.log", "zol.log"}));
        EXPECT_EQ(allText(), "1\n2\n3\n4\n");
    });
}

TEST_F(RotatingLogTest, WritesOnIfASecondHasNoNameLeft) {
    inFolder(
        [] {
            std::ofstream("zol.20260131T090507Z.999.log") << "";
            RotatingLog log("Test", withSize(1));
            for (int i = 0; i < 1002; ++i) {
                log.write("line " + std::to_string(i) + "\n", start());
            }
            EXPECT_EQ(textOf("zol.log"), numbered(999, 1002));
            log.write("line 1002\n", start() + 1s);
            EXPECT_EQ(textOf("zol.log"), "line 1002\n");
            EXPECT_EQ(allText(), numbered(0, 1003));
        },
        "ZOL back end Test: cannot begin a new file for zol.log: File exists; writing on to the "
        "old "
        "one\n");
}

TEST_F(RotatingLogTest, RotatesAtATimeOfDay) {
    inFolder([] {
        RotatingLogSettings settings = withSize(0);
        settings.clock = RotationClock(9, 30);
        RotatingLog log("Test", settings);
        log.write("1\n", localTime(1, 31, 9, 29));
        log.write("2\n", localTime(1, 31, 9, 30) - 1ms);
        log.write("3\n", localTime(1, 31, 9, 30));
        log.write("4\n", localTime(2, 1, 9, 29));
        log.write("5\n", localTime(2, 1, 9, 30));
        EXPECT_EQ(rotatedTexts("zol.log"), (Texts{"1\n2\n", "3\n4\n"}));
        EXPECT_EQ(textOf("zol.log"), "5\n");
    });
}

TEST_F(RotatingLogTest, RotatesAtATimeOfDayAndAtASize) {
    inFolder([] {
        RotatingLogSettings settings = daily();
        settings.maxBytes = 4;
        RotatingLog log("Test", settings);
        log.write("1\n", localTime(1, 31, 22));
        log.write("2\n", localTime(1, 31, 23));
        log.write("3\n", localTime(1, 31, 23, 30));
        log.write("4\n", localTime(2, 1, 0));
        EXPECT_EQ(rotatedTexts("zol.log", "2026-01-31"), (Texts{"1\n2\n", "3\n"}));
        EXPECT_EQ(textOf("zol.log"), "4\n");
    });
}

TEST_F(RotatingLogTest, NamesAFileAfterTheDayThatItHoldsAndNotAfterThatOfItsRotation) {
    inFolder([] {
        RotatingLog log("Test", daily());
        log.write("1\n", localTime(1, 31, 12));
        log.write("2\n", localTime(2, 4, 12));
        log.write("3\n", localTime(2, 5, 12));
        EXPECT_EQ(rotatedTexts("zol.log", "2026-01-31"), Texts{"1\n"});
        EXPECT_EQ(rotatedTexts("zol.log", "2026-02-04"), Texts{"2\n"});
    });
}

TEST_F(RotatingLogTest, RotatesNoEmptyFile) {
    inFolder([] {
        RotatingLog log("Test", daily());
        std::ofstream("zol.log") << "";
        log.write("1\n", Clock::now() + 72h);
        EXPECT_EQ(filesInFolder(), Texts{"zol.log"});
    });
}

TEST_F(RotatingLogTest, ContinuesTheFileOfItsPeriodAfterARestart) {
    inFolder([] {
        const Clock::time_point noon = localTime(1, 31, 12);
        RotatingLog("Test", daily()).write("1\n", noon);
        const auto age = Clock::now() - noon;
        fs::last_write_time("zol.log", fs::file_time_type::clock::now() -
                                           std::chrono::duration_cast<std::chrono::seconds>(age));
        RotatingLog("Test", daily()).write("2\n", localTime(1, 31, 23, 59));
        EXPECT_EQ(textOf("zol.log"), "1\n2\n");
        fs::last_write_time("zol.log", fs::file_time_type::clock::now() -
                                           std::chrono::duration_cast<std::chrono::seconds>(age));
        RotatingLog("Test", daily()).write("3\n", localTime(2, 1, 0));
        EXPECT_EQ(textOf("zol.log"), "3\n");
        EXPECT_EQ(rotatedTexts("zol.log", "2026-01-31"), Texts{"1\n2\n"});
    });
}

TEST_F(RotatingLogTest, CountsTheSizeOfAnEarlierProcess) {
    inFolder([] {
        RotatingLog("Test", withSize(4)).write("1\n", start());
        RotatingLog log("Test", withSize(4));
        log.write("2\n", start());
        log.write("3\n", start());
        EXPECT_EQ(rotatedTexts("zol.log"), Texts{"1\n2\n"});
    });
}

TEST_F(RotatingLogTest, WritesOnWhenTheClockIsSetBack) {
    inFolder([] {
        RotatingLogSettings settings = daily();
        settings.retention.count = 1;
        RotatingLog log("Test", settings);
        log.write("1\n", localTime(1, 31, 12));
        log.write("2\n", localTime(2, 1, 12));
        log.write("3\n", localTime(1, 20, 12));
        EXPECT_EQ(textOf("zol.log"), "2\n3\n") << "nothing is renamed for it";
        log.write("4\n", localTime(1, 21, 0));
        EXPECT_EQ(textOf("zol.log"), "4\n") << "the next day of the new time";
        EXPECT_EQ(rotatedTexts("zol.log", ".{10}"), Texts{"2\n3\n"})
            << "the last rotated one is kept, although the other's name is newer";
    });
}

TEST_F(RotatingLogTest, WritesOnIfTheRenameIsRefusedAndTriesAgainASecondLater) {
    inFolder(
        [] {
            HeldFile::prepare();
            RotatingLog log("Test", withSize(7));
            log.write("line 0\n", start());
            {
                const HeldFile held("zol.log");
                for (int i = 1; i < 4; ++i) {
                    log.write("line " + std::to_string(i) + "\n", start() + i * 1ms);
                }
                log.write("line 4\n", start() + 2s);
                EXPECT_EQ(filesInFolder(), Texts{"zol.log"});
            }
            log.write("line 5\n", start() + 2999ms);
            EXPECT_EQ(textOf("zol.log"), numbered(0, 6)) << "it is not time yet";
            log.write("line 6\n", start() + 3s);
            EXPECT_EQ(rotatedTexts("zol.log"), Texts{numbered(0, 6)});
            log.write("line 7\n", start() + 3s);
            EXPECT_EQ(rotatedTexts("zol.log"), (Texts{numbered(0, 6), numbered(6, 7)}));
            EXPECT_EQ(textOf("zol.log"), numbered(7, 8));
        },
        "ZOL back end Test: cannot begin a new file for zol.log: " + HeldFile::refusal() +
            "; writing on to the old one\n");
}

TEST_F(RotatingLogTest, LosesNoLineIfAnOlderFileIsHeld) {
    inFreshFolder([] {
        HeldFile::prepare();
        RotatingLogSettings settings = withSize(7);
        settings.retention.count = 1;
        testing::internal::CaptureStderr();
        RotatingLog log("Test", settings);
        log.write("line 0\n", start());
        log.write("line 1\n", start());
        {
            const HeldFile held("zol.20260131T090507Z.000.log");
            log.write("line 2\n", start() + 1s);
            log.write("line 3\n", start() + 2s);
            log.write("line 4\n", start() + 3s);
            EXPECT_EQ(rotatedTexts("zol.log"), (Texts{numbered(0, 1), numbered(3, 4)}));
        }
        log.write("line 5\n", start() + 4s);
        EXPECT_EQ(rotatedTexts("zol.log"), Texts{numbered(4, 5)}) << "removed when it is free";
        const std::string report = testing::internal::GetCapturedStderr();
        EXPECT_EQ(report.find("ZOL back end Test: cannot remove "), 0U) << report;
        EXPECT_NE(report.find("zol.20260131T090507Z.000.log: "), std::string::npos) << report;
        EXPECT_EQ(std::count(report.begin(), report.end(), '\n'), 1) << report;
    });
}

TEST_F(RotatingLogTest, KeepsTheDiskBudgetAfterEachLine) {
    inFolder([] {
        RotatingLogSettings settings = withSize(70);
        settings.retention.bytes = 300;
        RotatingLog log("Test", settings);
        std::uint64_t most = 0;
        for (int i = 0; i < 200; ++i) {
            log.write("line " + std::to_string(i) + "\n", start() + i * 100ms);
            ASSERT_LE(bytesInFolder(), 300U) << i;
            most = std::max(most, bytesInFolder());
        }
        EXPECT_GT(most, 250U) << "more is kept than one file";
    });
}

TEST_F(RotatingLogTest, RemovesExpiredFilesWhenItOpens) {
    inFolder([] {
        for (const char* name : {"zol.7.log", "zol_2025-01-31.log", "zol.20250131T090507Z.000.log",
                                 "zol.20260131T090506Z.000.log", "zol-important.log",
                                 "zol.20250131T090507Z.000.log.bak"}) {
            std::ofstream(name) << "x\n";
        }
        const auto age = Clock::now() - start() + 25h;
        fs::last_write_time("zol.7.log", fs::file_time_type::clock::now() -
                                             std::chrono::duration_cast<std::chrono::seconds>(age));
        RotatingLogSettings settings = withSize(0);
        settings.retention.days = 1;
        RotatingLog log("Test", settings);
        log.write("x\n", start());
        EXPECT_EQ(filesInFolder(), (Texts{"zol-important.log", "zol.20250131T090507Z.000.log.bak",
                                          "zol.20260131T090506Z.000.log", "zol.log"}));
    });
}

TEST_F(RotatingLogTest, MakesAMovedFileAnew) {
    inFolder([] {
        RotatingLog log("Test", withSize(0));
        log.write("1\n", start());
        fs::rename("zol.log", "moved.log");
        log.write("2\n", start() + 199ms);
        log.write("3\n", start() + 200ms);
        EXPECT_EQ(textOf("moved.log"), "1\n2\n");
        EXPECT_EQ(textOf("zol.log"), "3\n");
    });
}

TEST_F(RotatingLogTest, MakesADeletedFileAnew) {
    inFolder([] {
        RotatingLog log("Test", withSize(0));
        log.write("1\n", start());
        fs::remove("zol.log");
        log.write("2\n", start() + 200ms);
        log.write("3\n", start() + 201ms);
        EXPECT_EQ(textOf("zol.log"), "2\n3\n");
    });
}

TEST_F(RotatingLogTest, RenamesNoFileThatSomebodyElsePutThere) {
    inFolder([] {
        RotatingLog log("Test", withSize(4));
        log.write("1\n", start());
        log.write("2\n", start());
        fs::rename("zol.log", "moved.log");
        std::ofstream("zol.log", std::ios::binary) << "A\n";
        log.write("3\n", start());
        EXPECT_EQ(textOf("zol.log"), "A\n3\n");
        EXPECT_EQ(filesInFolder(), (Texts{"moved.log", "zol.log"}));
    });
}

TEST_F(RotatingLogTest, WritesAtTheBeginOfATruncatedFile) {
    inFolder([] {
        RotatingLog log("Test", withSize(10));
        log.write("1234567\n", start());
        fs::resize_file("zol.log", 0);
        log.write("2\n", start() + 200ms);
        log.write("3\n", start() + 200ms);
        EXPECT_EQ(textOf("zol.log"), "2\n3\n");
        EXPECT_EQ(filesInFolder(), Texts{"zol.log"}) << "its size counts from the truncation on";
    });
}

TEST_F(RotatingLogTest, RefusesASecondWriterUntilTheFirstOneHasEnded) {
    inFolder([] {
        auto first = std::make_unique<RotatingLog>("Test", withSize(0));
        first->write("1\n", start());
        RotatingLog second("Test", withSize(0));
        EXPECT_EQ(failureOf(second, start()),
                  "another process or back end writes to zol.log; with {pid} in the path, each "
                  "process has a file of its own");
        first.reset();
        EXPECT_NE(failureOf(second, start() + 999ms), "") << "it is not time yet";
        EXPECT_EQ(failureOf(second, start() + 1s), "");
        EXPECT_EQ(textOf("zol.log"), "1\nline\n");
    });
}

TEST_F(RotatingLogTest, TriesToOpenASecondLaterAtTheEarliest) {
    inFolder([] {
        fs::create_directory("zol.log");
        RotatingLog log("Test", withSize(0));
        EXPECT_EQ(failureOf(log, start()), "zol.log is a folder and not a regular file");
        fs::remove("zol.log");
        EXPECT_EQ(failureOf(log, start() + 999ms), "zol.log is a folder and not a regular file");
        EXPECT_EQ(failureOf(log, start() - 1h), "") << "a clock that was set back does not lock it";
        EXPECT_EQ(textOf("zol.log"), "line\n");
    });
}

TEST_F(RotatingLogTest, CreatesMissingFolders) {
    inFolder([] {
        RotatingLogSettings settings = withSize(0);
        settings.path = fs::path("logs") / "today" / "zol.log";
        RotatingLog log("Test", settings);
        log.write("1\n", start());
        EXPECT_EQ(textOf(settings.path), "1\n");
    });
}

} // namespace
