// The crisis log used by many threads, and during ordinary logging.

#include <array>
#include <atomic>
#include <chrono>
#include <mutex>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "CrisisLogHooks.h"
#include "CrisisLogSandbox.h"
#include "RecordingBackend.h"

#include "ZOL/Framework/CrisisLogging/CrisisLogger.h"
#include "ZOL/Framework/GenericLogger/Logger.h"

using support::CrisisLogSandbox;
using ZOL::Framework::CrisisLogging::CrisisLogger;
namespace CrisisLogHooks = support::CrisisLogHooks;
using CrisisLogHooks::Kind;

namespace {

constexpr int threadCount = 8;
constexpr int linesPerThread = 100;

std::string messageOf(int thread, int line) {
    return "thread " + std::to_string(thread) + " line " + std::to_string(line) +
           std::string(50, '.');
}

void logFromThreads() {
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([thread] {
            for (int line = 0; line < linesPerThread; ++line) {
                CrisisLogger::instance().log(messageOf(thread, line).c_str());
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

std::vector<std::string> linesOfTheFile() {
    std::istringstream content(CrisisLogHooks::content());
    std::vector<std::string> lines;
    for (std::string line; std::getline(content, line);) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        lines.push_back(line);
    }
    return lines;
}

CRISIS_LOG_TEST(CrisisLoggerThreads, LinesArriveWholeAndThoseOfOneThreadInItsOrder) {
    CrisisLogHooks::attach();
    CrisisLogHooks::setTime(9, 5, 7, 12);
    logFromThreads();

    std::array<int, threadCount> nextLine = {};
    for (const std::string& line : linesOfTheFile()) {
        const std::string start = "09:5:7.012 - thread ";
        ASSERT_EQ(line.substr(0, start.size()), start);
        const int thread = line[start.size()] - '0';
        ASSERT_TRUE(thread >= 0 && thread < threadCount) << line;
        int& next = nextLine[static_cast<std::size_t>(thread)];
        ASSERT_EQ(line, "09:5:7.012 - " + messageOf(thread, next));
        ++next;
    }
    for (const int count : nextLine) {
        EXPECT_EQ(count, linesPerThread);
    }
}

CRISIS_LOG_TEST(CrisisLoggerThreads, LinesAreOrderedByTime) {
    CrisisLogHooks::attach();
    CrisisLogHooks::setTime(9, 0, 0, 0, 1); // each read of the clock returns another millisecond
    CrisisLogHooks::observe([](const CrisisLogHooks::Call& call) {
        if (call.kind == Kind::Clock) {
            std::this_thread::yield();
        }
    });
    logFromThreads();
    CrisisLogHooks::observe(nullptr);

    int millisecond = 0;
    for (const std::string& line : linesOfTheFile()) {
        const std::string padded = std::to_string(1000 + millisecond % 1000).substr(1);
        EXPECT_EQ(line.substr(0, 11), "09:0:0." + padded + " ") << line;
        ++millisecond;
    }
    EXPECT_EQ(millisecond, threadCount * linesPerThread);
}

CRISIS_LOG_TEST(CrisisLoggerThreads, NoThreadLooksAtTheClockBeforeTheLineOfAnotherIsFlushed) {
    CrisisLogHooks::attach();
    CrisisLogHooks::setTime(9, 5, 7, 12);
    CrisisLogger::instance();
    std::mutex mutex;
    std::vector<std::pair<Kind, std::thread::id>> calls;
    CrisisLogHooks::observe([&](const CrisisLogHooks::Call& call) {
        {
            const std::lock_guard<std::mutex> lock(mutex);
            calls.emplace_back(call.kind, std::this_thread::get_id());
        }
        std::this_thread::yield();
    });
    logFromThreads();
    CrisisLogHooks::observe(nullptr);

    ASSERT_EQ(calls.size(), 3U * threadCount * linesPerThread);
    for (std::size_t i = 0; i < calls.size(); i += 3) {
        ASSERT_EQ(calls[i], std::make_pair(Kind::Clock, calls[i].second)) << "call " << i;
        ASSERT_EQ(calls[i + 1], std::make_pair(Kind::Write, calls[i].second)) << "call " << i;
        ASSERT_EQ(calls[i + 2], std::make_pair(Kind::Flush, calls[i].second)) << "call " << i;
    }
}

/// Blocks the thread that makes a call of that kind until it is released.
class Gate {
public:
    explicit Gate(Kind kind) {
        CrisisLogHooks::observe([this, kind](const CrisisLogHooks::Call& call) {
            ++calls_;
            if (call.kind == kind && !open_) {
                reached_ = true;
                while (!open_) {
                    std::this_thread::yield();
                }
            }
        });
    }
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;
    ~Gate() { CrisisLogHooks::observe(nullptr); }

    void waitUntilReached() const {
        while (!reached_) {
            std::this_thread::yield();
        }
    }
    void open() { open_ = true; }
    int calls() const { return calls_; }

private:
    std::atomic<bool> reached_ = false;
    std::atomic<bool> open_ = false;
    std::atomic<int> calls_ = 0;
};

void secondLineWaitsWhileTheFirstIsAt(Kind kind, int callsOfTheFirst) {
    CrisisLogHooks::attach();
    CrisisLogHooks::setTime(9, 5, 7, 12, 1);
    CrisisLogger& logger = CrisisLogger::instance();
    Gate gate(kind);
    std::thread first([&] { logger.log("first"); });
    gate.waitUntilReached();
    std::atomic<bool> secondDone = false;
    std::thread second([&] {
        logger.log("second");
        secondDone = true;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(secondDone);
    EXPECT_EQ(gate.calls(), callsOfTheFirst) << "the second has not even looked at the clock";
    EXPECT_EQ(&CrisisLogger::instance(), &logger) << "which waits for no line";
    gate.open();
    first.join();
    second.join();
    const std::string lineEnd = CrisisLogSandbox::lineEnd;
    EXPECT_EQ(CrisisLogHooks::content(),
              "09:5:7.012 - first" + lineEnd + "09:5:7.013 - second" + lineEnd);
}

CRISIS_LOG_TEST(CrisisLoggerThreads, ALineWaitsWhileAnotherLooksAtTheClock) {
    secondLineWaitsWhileTheFirstIsAt(Kind::Clock, 1);
}

CRISIS_LOG_TEST(CrisisLoggerThreads, ALineWaitsWhileAnotherIsWritten) {
    secondLineWaitsWhileTheFirstIsAt(Kind::Write, 2);
}

CRISIS_LOG_TEST(CrisisLoggerThreads, ALineWaitsWhileAnotherIsFlushed) {
    secondLineWaitsWhileTheFirstIsAt(Kind::Flush, 3);
}

// The thread sanitizer reports a race if the singleton is published without release.
CRISIS_LOG_TEST(CrisisLoggerThreads, AThreadMayUseTheLogThatAnotherOneOpenedWithoutMoreOrder) {
    CrisisLogHooks::attach();
    CrisisLogHooks::setTime(9, 5, 7, 12);
    std::atomic<bool> opened = false;
    std::thread user([&] {
        while (!opened.load(std::memory_order_relaxed)) {
            std::this_thread::yield();
        }
        CrisisLogger::instance().log("line");
    });
    CrisisLogger::instance();
    opened.store(true, std::memory_order_relaxed);
    user.join();
    EXPECT_EQ(CrisisLogHooks::content(),
              std::string("09:5:7.012 - line") + CrisisLogSandbox::lineEnd);
}

CRISIS_LOG_TEST(CrisisLoggerThreads, ALineDoesNotWaitForOrdinaryLogging) {
    CrisisLogHooks::attach();
    CrisisLogHooks::setTime(9, 5, 7, 12);
    static support::Journal journal;
    static support::RecordingBackend backend("A", journal);
    // The channel holds the logging lock while another thread, and the channel itself, use the
    // crisis log.
    backend.beforeLog = [](const std::string&, ZOL::Framework::GenericLogger::LoggingLevel,
                           const char*) {
        std::thread([] { CrisisLogger::instance().log("another thread's"); }).join();
        CrisisLogger::instance().log("the channel's");
    };
    ZOL::Framework::GenericLogger::Logger::installBackend(&backend);
    ZOL::Framework::GenericLogger::Logger::getLogger("logger")->info() << "ordinary";
    ZOL::Framework::GenericLogger::Logger::uninstallBackend(&backend);
    const std::string lineEnd = CrisisLogSandbox::lineEnd;
    EXPECT_EQ(CrisisLogHooks::content(),
              "09:5:7.012 - another thread's" + lineEnd + "09:5:7.012 - the channel's" + lineEnd);
    EXPECT_EQ(journal, support::Journal{"A/logger 30 ordinary"});
}

} // namespace
