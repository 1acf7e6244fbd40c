// RotatingLog while another process has its files open with the C++ library, which on Windows
// shares neither deletion nor renaming.

#include "files/RotatingLog.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "ChildProcess.h"
#include "FreshFolder.h"
#include "HeldFile.h"
#include "RotatedFiles.h"

using namespace ZOL::Backends;
using namespace std::chrono_literals;
namespace fs = std::filesystem;
using support::ChildProcess;

namespace {

using Clock = RotatingLog::Clock;

constexpr const char* roleVariable = "ZOL_TEST_HOLDS_FILES";
constexpr const char* theEnd = "end";
constexpr bool holdingRefuses = fs::path::preferred_separator == '\\';
constexpr int linesOfAHold = 20;
constexpr auto lineInterval = 400ms; // a hold takes several retry intervals

fs::path orderFile(int number) {
    return "order-" + std::to_string(number);
}

fs::path doneFile(int number) {
    return "done-" + std::to_string(number);
}

void waitFor(const fs::path& path) {
    const auto deadline = std::chrono::steady_clock::now() + 60s;
    while (!fs::exists(path)) {
        ASSERT_LT(std::chrono::steady_clock::now(), deadline) << "no " << path;
        std::this_thread::sleep_for(1ms);
    }
}

/// In the process that a Holder starts: opens one file after the other.
void holdFilesIfBeside() {
    if (ChildProcess::environment(roleVariable).empty()) {
        return;
    }
    ChildProcess::endWithParent();
    std::ifstream held;
    for (int number = 0; !testing::Test::HasFailure(); ++number) {
        waitFor(orderFile(number));
        std::ifstream order(orderFile(number));
        for (; !order.is_open(); order.open(orderFile(number))) {
            std::this_thread::sleep_for(1ms); // on Windows, its rename may still have it open
        }
        std::string name;
        std::getline(order, name);
        order.close();
        held.close();
        if (name == theEnd) {
            std::_Exit(0);
        }
        held.open(name);
        std::ofstream(doneFile(number)) << (held.is_open() ? "open" : "cannot open " + name);
    }
    std::_Exit(1);
}

/// Another process, which runs the same test, and which has one file open at a time.
class Holder {
public:
    Holder() : process_(start()) {}
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;
    ~Holder() {
        order(theEnd);
        EXPECT_EQ(process_.wait(), 0);
    }

    /// Releases the file before, and holds this one when the function returns.
    void hold(const fs::path& file) {
        const fs::path done = doneFile(order(file.string()));
        waitFor(done);
        while (fs::file_size(done) == 0) {
            std::this_thread::sleep_for(1ms);
        }
        EXPECT_EQ(textOf(done), "open");
    }

private:
    static std::vector<std::string> start() {
        const auto& test = *testing::UnitTest::GetInstance()->current_test_info();
        ChildProcess::setEnvironment(roleVariable, "yes");
        return {ChildProcess::thisProgram(),
                std::string("--gtest_filter=") + test.test_suite_name() + "." + test.name()};
    }

    int order(const std::string& text) {
        std::ofstream("next") << text;
        fs::rename("next", orderFile(orders_)); // the other process never sees half of it
        return orders_++;
    }

    ChildProcess process_;
    int orders_ = 0;
};

RotatingLogSettings withOneLineEach() {
    RotatingLogSettings settings;
    settings.path = "logs/zol.log";
    settings.maxBytes = 1;
    return settings;
}

std::string line(int number) {
    return "line " + std::to_string(number) + "\n";
}

std::string lines(int begin, int end) {
    std::string text;
    for (int number = begin; number < end; ++number) {
        text += line(number);
    }
    return text;
}

/// The text of all files, the oldest first.
std::string textInFiles() {
    std::string text;
    for (const std::string& rotated : rotatedTexts("logs/zol.log")) {
        text += rotated;
    }
    return text + textOf("logs/zol.log");
}

/// Writes a line, each at a later time.
class NumberedLines {
public:
    explicit NumberedLines(const RotatingLogSettings& settings) : log_("Test", settings) {}

    void write(int count) {
        for (int i = 0; i < count; ++i) {
            log_.write(line(written_), time_);
            ++written_;
            time_ += lineInterval;
        }
    }

    int written() const { return written_; }

private:
    RotatingLog log_;
    Clock::time_point time_ = Clock::from_time_t(1769850307); // 2026-01-31 09:05:07 UTC
    int written_ = 0;
};

TEST(FilesHeldByAnotherProcess, HaveEachLineOnceAfterAThousandRotations) {
    holdFilesIfBeside();
    inFreshFolder([] {
        testing::internal::CaptureStderr();
        NumberedLines log(withOneLineEach());
        log.write(2);
        std::string expectedReports;
        {
            Holder holder;
            constexpr std::size_t rotations = 1000;
            for (std::size_t files = 1, turn = 0; files < rotations; ++turn) {
                holder.hold("logs/zol.log");
                log.write(linesOfAHold);
                const auto rotated = filesRotatedFrom("logs/zol.log");
                if (holdingRefuses) {
                    EXPECT_EQ(rotated.size(), files);
                    expectedReports += "ZOL back end Test: cannot begin a new file for "
                                       "logs/zol.log: " +
                                       HeldFile::refusal() + "; writing on to the old one\n";
                } else {
                    EXPECT_EQ(rotated.size(), files + linesOfAHold);
                }
                holder.hold(rotated[turn % rotated.size()]);
                log.write(linesOfAHold);
                files = filesRotatedFrom("logs/zol.log").size();
                ASSERT_GT(files, rotated.size()) << "the file before is free again";
            }
        }
        EXPECT_TRUE(textInFiles() == lines(0, log.written()));
        EXPECT_EQ(testing::internal::GetCapturedStderr(), expectedReports);
    });
}

TEST(FilesHeldByAnotherProcess, AreRemovedWhenTheyAreFree) {
    holdFilesIfBeside();
    inFreshFolder([] {
        constexpr int count = 5;
        RotatingLogSettings settings = withOneLineEach();
        settings.retention.count = count;
        testing::internal::CaptureStderr();
        NumberedLines log(settings);
        log.write(count + 1);
        {
            Holder holder;
            constexpr int rotations = 1000;
            for (int turn = 0; log.written() < rotations; ++turn) {
                const auto files = filesRotatedFrom("logs/zol.log");
                ASSERT_EQ(files.size(), static_cast<std::size_t>(count));
                const int first = log.written() - count - 1;
                const fs::path& held = files[static_cast<std::size_t>(turn % count)];
                holder.hold(held);
                log.write(2 * count);
                const std::string kept = lines(first + 2 * count, log.written());
                EXPECT_EQ(textInFiles(), (holdingRefuses ? line(first + turn % count) : "") + kept);
                EXPECT_EQ(fs::exists(held), holdingRefuses) << held;
                holder.hold("order-0"); // releases the other one
                log.write(1);
                EXPECT_FALSE(fs::exists(held)) << held;
            }
        }
        const std::string report = testing::internal::GetCapturedStderr();
        EXPECT_EQ(std::count(report.begin(), report.end(), '\n'), holdingRefuses ? 1 : 0) << report;
        EXPECT_EQ(report.find("ZOL back end Test: cannot remove logs"),
                  holdingRefuses ? 0 : std::string::npos)
            << report;
    });
}

} // namespace
