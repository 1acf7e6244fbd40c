#include "files/BufferedLog.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/LoggingLevel.h"

#include "FreshFolder.h"
#include "RotatedFiles.h"
#include "WaitFor.h"

using namespace ZOL::Backends;
using namespace ZOL::Framework::GenericLogger;
using namespace std::chrono_literals;
namespace fs = std::filesystem;

namespace {

using Clock = BufferedLog::Clock;

/// No test waits as long as this for a flush.
constexpr std::chrono::milliseconds never = 1h;
constexpr std::chrono::milliseconds soon = 20ms;

RotatingLogSettings flushedEach(std::chrono::milliseconds interval) {
    RotatingLogSettings settings;
    settings.path = "zol.log";
    settings.flush.interval = interval;
    return settings;
}

/// A log whose back end has ended.
class TestLog {
public:
    explicit TestLog(const RotatingLogSettings& settings)
        : log_(std::make_shared<BufferedLog>("Test", settings)) {}
    TestLog(const TestLog&) = delete;
    TestLog& operator=(const TestLog&) = delete;
    ~TestLog() { log_->close(); }

    BufferedLog* operator->() const { return log_.get(); }

    void write(const std::string& line, long long level = LOG_LEVEL_INFO) const {
        log_->write(line + "\n", level, Clock::now());
    }

    /// Writes lines until the worker runs and one is kept.
    void writeUntilOneIsKept() const {
        write("start");
        EXPECT_TRUE(isSoon([this] {
            const std::string before = textOf("zol.log");
            write("start");
            return textOf("zol.log") == before;
        })) << "no line is kept";
    }

    /// How many lines have been lost.
    std::string lossesOf(const std::function<void()>& body) const {
        testing::internal::CaptureStderr();
        body();
        DropCounter drops("Test");
        log_->countLostLines(drops);
        drops.reportAtExit();
        return testing::internal::GetCapturedStderr();
    }

private:
    std::shared_ptr<BufferedLog> log_;
};

/// The text after the lines of writeUntilOneIsKept.
std::string newText() {
    const std::string text = textOf("zol.log");
    const std::size_t begin = text.rfind("start\n");
    return begin == std::string::npos ? text : text.substr(begin + std::string("start\n").size());
}

void expectText(const std::string& text) {
    EXPECT_TRUE(isSoon([&] { return newText() == text; })) << newText();
}

TEST(BufferedLog, NeedsAWorkerForAnIntervalAndForCompression) {
    RotatingLogSettings settings;
    EXPECT_FALSE(BufferedLog::needsWorker(settings));
    settings.isCompressed = true;
    EXPECT_TRUE(BufferedLog::needsWorker(settings));
    EXPECT_TRUE(BufferedLog::needsWorker(flushedEach(soon)));
}

TEST(BufferedLog, WritesEachLineAtOnceWithoutAnInterval) {
    inFreshFolder([] {
        RotatingLogSettings settings = flushedEach(soon);
        settings.flush.interval.reset();
        for (const bool isCompressed : {false, true}) {
            settings.isCompressed = isCompressed;
            const TestLog log(settings);
            for (int i = 0; i < 100; ++i) {
                log.write(std::to_string(i));
                const std::string text = textOf("zol.log");
                EXPECT_EQ(text.substr(text.rfind('\n', text.size() - 2) + 1),
                          std::to_string(i) + "\n");
            }
        }
    });
}

TEST(BufferedLog, KeepsLinesForTheInterval) {
    inFreshFolder([] {
        const TestLog log(flushedEach(soon));
        log.writeUntilOneIsKept();
        log.write("1");
        log.write("2");
        expectText("1\n2\n");
        log.write("3"); // after the worker has gone to sleep or before
        expectText("1\n2\n3\n");
        std::this_thread::sleep_for(3 * soon);
        log.write("4");
        expectText("1\n2\n3\n4\n");
    });
}

TEST(BufferedLog, WritesNothingBeforeTheInterval) {
    inFreshFolder([] {
        const TestLog log(flushedEach(never));
        log.writeUntilOneIsKept();
        log.write("1");
        std::this_thread::sleep_for(2 * soon);
        EXPECT_EQ(newText(), "");
    });
}

TEST(BufferedLog, WritesALineOfTheLevelAtOnceAfterThoseBefore) {
    inFreshFolder([] {
        RotatingLogSettings settings = flushedEach(never);
        settings.flush.minLevel = LOG_LEVEL_ERROR;
        const TestLog log(settings);
        log.writeUntilOneIsKept();
        log.write("1", LOG_LEVEL_ERROR - 1);
        EXPECT_EQ(newText(), "");
        log.write("2", LOG_LEVEL_ERROR);
        EXPECT_EQ(newText(), "1\n2\n");
    });
}

TEST(BufferedLog, WritesTheLinesWhenItFinishesAndThenEachAtOnce) {
    inFreshFolder([] {
        const TestLog log(flushedEach(never));
        log.writeUntilOneIsKept();
        log.write("1");
        EXPECT_EQ(log.lossesOf([&] { log->finish(); }), "");
        EXPECT_EQ(newText(), "1\n");
        log.write("2");
        EXPECT_EQ(newText(), "1\n2\n");
        log->finish();
        log.write("3");
        EXPECT_EQ(newText(), "1\n2\n3\n");
    });
}

TEST(BufferedLog, WritesTheLinesWhenItClosesAndFreesTheFile) {
    inFreshFolder([] {
        const TestLog log(flushedEach(never));
        log.writeUntilOneIsKept();
        log.write("1");
        EXPECT_EQ(log.lossesOf([&] { log->close(); }), "");
        EXPECT_EQ(newText(), "1\n");
        const TestLog other(flushedEach(never));
        other.write("2"); // else it would be refused
        other->finish();
        EXPECT_EQ(newText(), "1\n2\n");
    });
}

TEST(BufferedLog, IsDestroyedSoonAfterItWasClosed) {
    inFreshFolder([] {
        auto log = std::make_shared<BufferedLog>("Test", flushedEach(never));
        log->write("1\n", LOG_LEVEL_INFO, BufferedLog::Clock::now());
        const std::weak_ptr<BufferedLog> observer = log;
        log->close();
        log.reset();
        EXPECT_TRUE(isSoon([&] { return observer.expired(); })) << "its worker goes on";
    });
}

TEST(BufferedLog, WritesTheLinesWhenTheBufferIsFull) {
    inFreshFolder([] {
        const TestLog log(flushedEach(never));
        log.writeUntilOneIsKept();
        constexpr std::size_t lineBytes = 1000;
        const std::string line(lineBytes - 1, 'x');
        for (int i = 0; i < 3000; ++i) {
            log.write(line);
        }
        const std::size_t written = newText().size();
        EXPECT_GT(written, 1000 * lineBytes);
        EXPECT_LT(written, 3000 * lineBytes) << "the last lines are kept";
        const std::string longLine(std::size_t{5} * 1024 * 1024, 'y');
        log.write(longLine);
        const std::string text = newText();
        EXPECT_EQ(text.size(), std::string("").size() + 3000 * lineBytes + longLine.size() + 1)
            << "a line that is longer than the buffer is written after those before it";
    });
}

TEST(BufferedLog, CountsKeptLinesForTheSizeOfAFile) {
    inFreshFolder([] {
        RotatingLogSettings settings = flushedEach(never);
        settings.maxBytes = 1000;
        {
            const TestLog log(settings);
            log.writeUntilOneIsKept();
            log.write("first");
            for (int i = 0; i < 1000; ++i) {
                log.write(std::to_string(i));
            }
        }
        std::string text;
        for (const std::string& rotated : rotatedTexts("zol.log")) {
            EXPECT_LE(rotated.size(), 1000U);
            EXPECT_GT(rotated.size(), 900U);
            text += rotated;
        }
        EXPECT_LE(textOf("zol.log").size(), 1000U);
        text += textOf("zol.log");
        std::string expected = "first\n";
        for (int i = 0; i < 1000; ++i) {
            expected += std::to_string(i) + "\n";
        }
        EXPECT_EQ(text.substr(text.find("first\n")), expected);
    });
}

TEST(BufferedLog, WritesKeptLinesToTheNewFileIfTheFileIsMoved) {
    inFreshFolder([] {
        const TestLog log(flushedEach(soon));
        log.writeUntilOneIsKept();
        log.write("1");
        expectText("1\n");
        fs::rename("zol.log", "moved.log");
        EXPECT_TRUE(isSoon([&] {
            log.write("x");
            return fs::exists("zol.log");
        }));
        log.write("last");
        log->finish();
        EXPECT_EQ(textOf("moved.log").find("last"), std::string::npos);
        EXPECT_NE(textOf("zol.log").find("last\n"), std::string::npos);
    });
}

} // namespace
