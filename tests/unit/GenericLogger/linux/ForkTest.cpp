// Processes that fork while other threads log.

#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

#include "CountingBackend.h"
#include "DoLog.h"
#include "LoggerFixture.h"

using namespace ZOL::Framework::GenericLogger;
using support::CountingBackend;
using support::doLog;
using support::Installed;
using support::Journal;

namespace {

// Its counter is protected by the logging lock only.
CountingBackend counting;

/// Gives way to other threads during a call, so that one of them has the lock nearly all the time.
class YieldingBackend final : public LoggerBackend, public LoggingChannel {
public:
    LoggingChannel* createChannel(const char*) override { return this; }
    void release() override {}
    void log(LoggingLevel, const char*) override { std::this_thread::yield(); }
};

YieldingBackend yielding;

class LoggerFork : public support::LoggerFixture {
protected:
    // A child that waits for the lock longer than this is ended by a signal.
    static constexpr unsigned childTimeout = 20; // seconds

    /// Forks, and returns the wait status of a child that exits with 0 if the function returns
    /// true.
    static int statusOfChild(const std::function<bool()>& inChild) {
        const pid_t child = fork();
        if (child == 0) {
            alarm(childTimeout);
            _exit(inChild() ? 0 : 1);
        }
        int status = -1;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        return status;
    }

    static bool logs(Logger* log) {
        const int before = counting.logged();
        doLog(log, LOG_LEVEL_INFO, "text");
        return counting.logged() == before + 1;
    }

    static bool anotherThreadLogs(Logger* log) {
        bool logged = false;
        std::thread([&] { logged = logs(log); }).join();
        return logged;
    }
};

TEST_F(LoggerFork, AThousandChildrenOfAProcessInWhichEightThreadsLogCanLog) {
    constexpr int forks = 1000;
    constexpr int threads = 8;
    Logger::installBackend(&yielding);
    const Installed installed(counting);
    Logger* const log = logger();
    const int before = counting.logged();

    std::atomic<bool> stop = false;
    std::atomic<int> messages = 0;
    std::vector<std::thread> logging;
    logging.reserve(threads);
    for (int i = 0; i < threads; ++i) {
        logging.emplace_back([&] {
            while (!stop) {
                doLog(log, LOG_LEVEL_INFO, "text");
                ++messages;
                std::this_thread::yield();
            }
        });
    }
    int status = 0;
    for (int i = 0; i < forks && status == 0; ++i) {
        status = statusOfChild([&] { return logs(log); });
    }
    stop = true;
    for (std::thread& thread : logging) {
        thread.join();
    }
    Logger::uninstallBackend(&yielding);

    EXPECT_EQ(status, 0);
    EXPECT_GT(messages, 0);
    EXPECT_EQ(counting.logged() - before, messages) << "the parent's threads stay one at a time";
}

TEST_F(LoggerFork, TheLockIsFreeInBothProcesses) {
    const Installed installed(counting);
    Logger* const log = logger();
    EXPECT_EQ(statusOfChild([&] { return logs(log) && anotherThreadLogs(log); }), 0);
    EXPECT_TRUE(anotherThreadLogs(log));
}

TEST_F(LoggerFork, AChannelMayForkAndBothProcessesReleaseTheLockAfterItsCall) {
    const Installed installed(counting);
    Logger* const log = logger();
    pid_t child = -1;
    installBackend("A").beforeLog = [&](const std::string&, LoggingLevel, const char* text) {
        if (std::string(text) == "fork") {
            child = fork();
        } else {
            EXPECT_NE(child, -1);
        }
    };

    doLog(log, LOG_LEVEL_INFO, "fork");
    if (child == 0) {
        alarm(childTimeout);
        _exit(anotherThreadLogs(log) ? 0 : 1);
    }
    EXPECT_TRUE(anotherThreadLogs(log));

    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

TEST_F(LoggerFork, TheForkingThreadKeepsTheLockInTheChildWhileAChannelRuns) {
    const Installed installed(counting);
    Logger* const log = logger();
    pid_t child = -1;
    std::atomic<bool> returned = false;
    installBackend("A").beforeLog = [&](const std::string&, LoggingLevel, const char* text) {
        if (std::string(text) != "fork") {
            return;
        }
        child = fork();
        if (child == 0) {
            alarm(childTimeout);
            std::thread other([&] {
                doLog(log, LOG_LEVEL_INFO, "other");
                returned = true;
            });
            usleep(50'000);
            const bool waited = !returned;
            other.detach();
            _exit(waited ? 0 : 1);
        }
    };

    doLog(log, LOG_LEVEL_INFO, "fork");

    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

TEST_F(LoggerFork, WhatWaitsInACacheIsInBothProcesses) {
    Logger* const log = logger();
    doLog(log, LOG_LEVEL_INFO, "cached");
    EXPECT_EQ(statusOfChild([&] {
                  installBackend("C");
                  return journal == Journal{line("C", 30, "cached")};
              }),
              0);
    installBackend("P");
    EXPECT_EQ(journal, Journal{line("P", 30, "cached")});
}

} // namespace
