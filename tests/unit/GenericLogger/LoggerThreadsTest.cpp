#include <atomic>
#include <chrono>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "DoLog.h"
#include "LoggerFixture.h"

using namespace ZOL::Framework::GenericLogger;
using support::doLog;

namespace {

constexpr int threadCount = 8;
constexpr int messagesPerThread = 100;

/// Counts calls, and proves that no two of them run at once anywhere in the process.
class ExclusiveBackend final : public LoggerBackend {
public:
    LoggingChannel* createChannel(const char*) override {
        const Presence presence;
        return &channel_;
    }

    static std::atomic<int> inside;
    static std::atomic<int> collisions;
    static std::atomic<int> messages;

private:
    struct Presence {
        Presence() {
            if (inside.fetch_add(1) != 0) {
                ++collisions;
            }
            std::this_thread::yield();
        }
        ~Presence() { inside.fetch_sub(1); }
    };

    class Channel final : public LoggingChannel {
    public:
        void release() override {}
        void log(LoggingLevel, const char*) override {
            const Presence presence;
            ++messages;
        }
    };

    Channel channel_;
};

std::atomic<int> ExclusiveBackend::inside = 0;
std::atomic<int> ExclusiveBackend::collisions = 0;
std::atomic<int> ExclusiveBackend::messages = 0;

class LoggerThreads : public support::LoggerFixture {};

TEST_F(LoggerThreads, EightThreadsLogWhileBackendsComeAndGoAndNoChannelIsEnteredTwiceAtOnce) {
    static ExclusiveBackend staying; // loggers keep its channel after this test
    static ExclusiveBackend coming;
    Logger::installBackend(&staying);

    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([this, thread] {
            for (int message = 0; message < messagesPerThread; ++message) {
                Logger* const log = logger(std::to_string((thread + message) % 5));
                log->minLogLevel(static_cast<LoggingLevel>(message));
                ZOL_LOG(log, LOG_LEVEL_FATAL) << "gated " << message;
                log->info() << "message " << message;
            }
        });
    }
    std::atomic<bool> finished = false;
    std::thread installer([&] {
        while (!finished) {
            Logger::installBackend(&coming);
            Logger::uninstallBackend(&coming);
        }
    });
    for (std::thread& thread : threads) {
        thread.join();
    }
    finished = true;
    installer.join();
    Logger::uninstallBackend(&staying);

    EXPECT_EQ(ExclusiveBackend::collisions, 0);
    EXPECT_GE(ExclusiveBackend::messages, threadCount * messagesPerThread)
        << "the back end that stayed sees every message";
}

TEST_F(LoggerThreads, EveryThreadGetsTheSameLoggerForAName) {
    std::vector<Logger*> seen(threadCount);
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back(
            [&, thread] { seen[static_cast<std::size_t>(thread)] = logger("raced for"); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(seen, std::vector<Logger*>(threadCount, logger("raced for")));
}

/// A thread that is inside a channel, with the logging lock, until release is called.
class ThreadInChannel {
public:
    ThreadInChannel(support::RecordingBackend& backend, Logger* log) {
        backend.beforeLog = [this](const std::string&, LoggingLevel, const char* text) {
            if (std::string(text) == "slow") {
                entered_ = true;
                while (!leave_) {
                    std::this_thread::yield();
                }
            }
        };
        thread_ = std::thread([log] { doLog(log, LOG_LEVEL_INFO, "slow"); });
        while (!entered_) {
            std::this_thread::yield();
        }
    }
    ThreadInChannel(const ThreadInChannel&) = delete;
    ThreadInChannel& operator=(const ThreadInChannel&) = delete;
    ~ThreadInChannel() {
        if (thread_.joinable()) {
            release();
        }
    }

    void release() {
        leave_ = true;
        thread_.join();
    }

private:
    std::atomic<bool> entered_ = false;
    std::atomic<bool> leave_ = false;
    std::thread thread_;
};

TEST_F(LoggerThreads, EveryOperationWithTheLockWaitsWhileAnotherThreadIsInsideAChannel) {
    support::RecordingBackend& backend = installBackend("A");
    support::RecordingBackend& late = makeBackend("B");
    Logger* const other = logger("other");
    const std::function<void()> operations[] = {
        [&] { doLog(other, LOG_LEVEL_INFO, "waits, although it is another logger"); },
        [&] { logger("other"); },
        [&] { install(late); },
        [&] { Logger::uninstallBackend(&late); },
        [&] { Logger::uninstallBackend(nullptr); },
    };
    for (const auto& operation : operations) {
        ThreadInChannel slow(backend, logger("slow"));
        std::atomic<bool> done = false;
        std::thread second([&] {
            operation();
            done = true;
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        EXPECT_FALSE(done) << "operation " << &operation - operations;
        // The level test takes no lock.
        EXPECT_TRUE(other->isLevelActive(LOG_LEVEL_FATAL));
        other->minLogLevel(LOG_LEVEL_INFO);
        other->enableLogging(true);
        slow.release();
        second.join();
        EXPECT_TRUE(done);
    }
}

} // namespace
