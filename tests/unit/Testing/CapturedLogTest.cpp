#include "ZOL/Testing/CapturedLog.h"

#include <atomic>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "CountingBackend.h"
#include "DoLog.h"
#include "FreshProcess.h"
#include "PlainContainer.h"
#include "ProcessResources.h"

#include "ZOL/Framework/GenericLogger/Logger.h"

using namespace ZOL::Framework::GenericLogger;
using support::doLog;
using support::inFreshProcess;
using ZOL::Testing::CapturedLog;
using ZOL::Testing::CapturedMessage;

namespace {

using Lines = std::vector<std::string>;

constexpr int threadCount = 8;
constexpr int messagesPerThread = 200;

// In bytes for a thousand objects. The heap itself keeps some freed blocks.
constexpr std::size_t lessThanABlockForEach = 16000;

static_assert(!std::is_copy_constructible_v<CapturedLog> &&
              !std::is_copy_assignable_v<CapturedLog>);
static_assert(std::is_same_v<std::iterator_traits<CapturedLog::const_iterator>::iterator_category,
                             std::random_access_iterator_tag>);

std::string lineOf(const CapturedMessage& message) {
    return std::to_string(message.level) + " " + message.logger + ": " + message.text;
}

Lines linesOf(const CapturedLog& log) {
    Lines lines;
    for (const CapturedMessage& message : log) {
        lines.push_back(lineOf(message));
    }
    return lines;
}

template <typename Action>
void onThreads(Action action) {
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back(action, thread);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(CapturedLogs, ReceiveEveryMessageWithItsLevelLoggerAndTextInOrder) {
    CapturedLog captured;
    Logger::getLogger("b")->info("first");
    Logger::getLogger("a")->fatal("second");
    Logger::getLogger("")->log(static_cast<LoggingLevel>(-7), "");
    doLog(Logger::getLogger("b"), LOG_LEVEL_TRACE, "two\nlines");
    EXPECT_EQ(linesOf(captured),
              (Lines{"30 b: first", "60 a: second", "-7 : ", "10 b: two\nlines"}));
}

TEST(CapturedLogs, TheFirstOneReceivesWhatTheCachesHeld) {
    inFreshProcess([] {
        Logger* const orders = Logger::getLogger("orders");
        doLog(orders, LOG_LEVEL_INFO, "first");
        doLog(Logger::getLogger("billing"), LOG_LEVEL_DEBUG, "second");
        doLog(orders, LOG_LEVEL_NONE, "third");
        for (int i = 0; i < 100; ++i) {
            doLog(orders, LOG_LEVEL_TRACE, "fills the cache");
        }
        {
            const CapturedLog captured;
            const Lines lines = linesOf(captured);
            ASSERT_EQ(lines.size(), 103U);
            EXPECT_EQ(Lines(lines.begin(), lines.begin() + 4),
                      (Lines{"20 billing: second", "30 orders: first", "0 orders: third",
                             "10 orders: fills the cache"}));
            EXPECT_EQ(lines.back(), "40 orders: LOG Cache overflow...");
        }
        doLog(orders, LOG_LEVEL_INFO, "dropped: the process has a back end");
        const CapturedLog next;
        EXPECT_TRUE(next.empty());
    });
}

TEST(CapturedLogs, ReceiveNothingFromBeforeAndAfter) {
    Logger* const logger = Logger::getLogger("orders");
    { // the back end is installed from now on
        const CapturedLog captured;
    }
    logger->error("before");
    CapturedLog captured;
    EXPECT_TRUE(captured.empty());
    EXPECT_EQ(captured.size(), 0U);
    EXPECT_EQ(captured.begin(), captured.end());
    logger->error("meanwhile");
    EXPECT_EQ(linesOf(captured), Lines{"50 orders: meanwhile"});
    EXPECT_FALSE(captured.empty());
}

TEST(CapturedLogs, KeepTheirOwnCopies) {
    CapturedLog captured;
    std::string text = "a text that is longer than a string holds within itself";
    std::string name = "a name that is longer than a string holds within itself";
    doLog(Logger::getLogger(name.c_str()), LOG_LEVEL_INFO, text.c_str());
    text.assign(text.size(), 'x');
    name.assign(name.size(), 'x');
    EXPECT_EQ(captured[0].text, "a text that is longer than a string holds within itself");
    EXPECT_EQ(captured[0].logger, "a name that is longer than a string holds within itself");
}

TEST(CapturedLogs, DoNotReceiveWhatADisabledLoggerDrops) {
    Logger* const logger = Logger::getLogger("disabled");
    CapturedLog captured;
    logger->enableLogging(false);
    logger->error("dropped");
    logger->enableLogging(true);
    logger->error("seen");
    EXPECT_EQ(linesOf(captured), Lines{"50 disabled: seen"});
}

TEST(CapturedLogs, ReceiveEveryMessageOfEveryThreadInItsOrder) {
    CapturedLog captured;
    onThreads([](int thread) {
        Logger* const logger = Logger::getLogger(("thread " + std::to_string(thread)).c_str());
        for (int message = 0; message < messagesPerThread; ++message) {
            logger->info() << message;
        }
    });
    ASSERT_EQ(captured.size(), static_cast<std::size_t>(threadCount * messagesPerThread));
    for (int thread = 0; thread < threadCount; ++thread) {
        const Lines texts = PlainContainer::textsOf(captured, "thread " + std::to_string(thread));
        ASSERT_EQ(texts.size(), static_cast<std::size_t>(messagesPerThread));
        for (int message = 0; message < messagesPerThread; ++message) {
            EXPECT_EQ(texts[static_cast<std::size_t>(message)], std::to_string(message));
        }
    }
}

TEST(CapturedLogs, CanBeReadWhileOthersLog) {
    CapturedLog captured;
    Logger* const logger = Logger::getLogger("busy");
    logger->info("first");
    const CapturedMessage& first = captured[0];
    const CapturedLog::const_iterator begin = captured.begin();
    const CapturedLog::const_iterator end = captured.end();
    std::atomic<int> running = threadCount;
    std::thread reader([&] {
        std::size_t seen = 0;
        while (running != 0) {
            const std::size_t size = captured.size();
            EXPECT_GE(size, seen);
            seen = size;
            for (const CapturedMessage& message : captured) {
                EXPECT_EQ(message.logger, "busy");
            }
            EXPECT_EQ(first.text, "first");
        }
    });
    onThreads([&](int) {
        for (int message = 0; message < messagesPerThread; ++message) {
            logger->info("next");
        }
        --running;
    });
    reader.join();
    EXPECT_EQ(&*begin, &first);
    EXPECT_EQ(end - begin, 1);
    EXPECT_EQ(end->text, "next") << "later messages follow after an earlier end";
}

TEST(CapturedLogs, CanBeClearedWhileOthersLog) {
    CapturedLog captured;
    Logger* const logger = Logger::getLogger("busy");
    std::atomic<int> running = threadCount;
    std::thread reader([&] {
        while (running != 0) {
            captured.clear();
        }
    });
    onThreads([&](int) {
        for (int message = 0; message < messagesPerThread; ++message) {
            logger->info("next");
        }
        --running;
    });
    reader.join();
    captured.clear();
    logger->info("last");
    EXPECT_EQ(linesOf(captured), Lines{"30 busy: last"});
}

TEST(CapturedLogs, CanBeMadeByManyThreadsAtOnce) {
    inFreshProcess([] {
        for (int i = 0; i < 1000; ++i) { // the installation takes a while
            Logger::getLogger(("logger " + std::to_string(i)).c_str());
        }
        std::atomic<int> ready = 0;
        onThreads([&ready](int thread) {
            const std::string name = std::to_string(thread);
            ++ready;
            while (ready != threadCount) {
                std::this_thread::yield();
            }
            for (int round = 0; round < 20; ++round) {
                const CapturedLog captured;
                ZOL_LOG(Logger::getLogger(name.c_str()), LOG_LEVEL_TRACE) << round;
                EXPECT_EQ(PlainContainer::textsOf(captured, name), Lines{std::to_string(round)});
            }
        });
    });
}

TEST(CapturedLogs, AreRandomAccessContainers) {
    CapturedLog captured;
    Logger* const logger = Logger::getLogger("orders");
    for (const char* const text : {"a", "b", "c"}) {
        logger->info(text);
    }
    EXPECT_EQ(PlainContainer::textsOf(captured, "orders"), (Lines{"a", "b", "c"}));
    EXPECT_EQ(PlainContainer::reversedTexts(captured), (Lines{"c", "b", "a"}));

    const CapturedLog::const_iterator begin = captured.begin();
    const CapturedLog::const_iterator end = captured.end();
    EXPECT_EQ(end - begin, 3);
    EXPECT_EQ(begin - end, -3);
    EXPECT_EQ((begin + 2)->text, "c");
    EXPECT_EQ((1 + begin)->text, "b");
    EXPECT_EQ((end - 1)->text, "c");
    EXPECT_EQ(begin[1].text, "b");
    CapturedLog::const_iterator it = begin;
    EXPECT_EQ((it++)->text, "a");
    EXPECT_EQ((it--)->text, "b");
    EXPECT_EQ((++it)->text, "b");
    EXPECT_EQ((--it)->text, "a");
    it += 2;
    EXPECT_EQ(it->text, "c");
    it -= 1;
    EXPECT_EQ((*it).text, "b");
    EXPECT_TRUE(begin < end && !(end < begin) && !(begin < begin));
    EXPECT_TRUE(end > begin && !(begin > end) && !(begin > begin));
    EXPECT_TRUE(begin <= end && begin <= begin && !(end <= begin));
    EXPECT_TRUE(end >= begin && end >= end && !(begin >= end));
    EXPECT_TRUE(begin != end && begin == captured.begin());
}

TEST(CapturedLogs, StartOverAfterClear) {
    CapturedLog captured;
    Logger::getLogger("orders")->info("old");
    captured.clear();
    EXPECT_TRUE(captured.empty());
    Logger::getLogger("orders")->info("new");
    EXPECT_EQ(linesOf(captured), Lines{"30 orders: new"});
}

TEST(CapturedLogs, ReceiveEverythingWhenNestedAndWhenTheyOverlap) {
    Logger* const logger = Logger::getLogger("orders");
    auto first = std::make_unique<CapturedLog>();
    logger->info("1");
    auto second = std::make_unique<CapturedLog>();
    logger->info("2");
    auto third = std::make_unique<CapturedLog>();
    logger->info("3");
    EXPECT_EQ(PlainContainer::textsOf(*first, "orders"), (Lines{"1", "2", "3"}));
    third.reset();
    first.reset();
    logger->info("4");
    EXPECT_EQ(PlainContainer::textsOf(*second, "orders"), (Lines{"2", "3", "4"}));
}

TEST(CapturedLogs, DoNotDisturbOtherBackEnds) {
    inFreshProcess([] {
        static support::CountingBackend before;
        static support::CountingBackend during;
        static support::CountingBackend after;
        Logger* const logger = Logger::getLogger("orders");
        const support::Installed beforeInstalled(before);
        {
            CapturedLog captured;
            logger->info("1");
            {
                const support::Installed duringInstalled(during);
                logger->info("2");
            }
            logger->info("3"); // its channel stays until the next installation
            EXPECT_EQ(PlainContainer::textsOf(captured, "orders"), (Lines{"1", "2", "3"}));
            EXPECT_EQ(before.logged(), 3);
            EXPECT_EQ(during.logged(), 2);
        }
        const support::Installed afterInstalled(after);
        logger->info("4");
        CapturedLog captured;
        logger->info("5");
        EXPECT_EQ(PlainContainer::textsOf(captured, "orders"), Lines{"5"});
        EXPECT_EQ(before.logged(), 5);
        EXPECT_EQ(after.logged(), 2);
        EXPECT_EQ(during.logged(), 2);
    });
}

/// Throws for the logger of that name.
class RefusingBackend final : public LoggerBackend {
public:
    LoggingChannel* createChannel(const char* name) override {
        if (refused == name) {
            throw std::runtime_error("refused");
        }
        return nullptr;
    }

    std::string refused;
};

TEST(CapturedLogs, AFailedInstallationChangesNothingAndIsRepeated) {
    inFreshProcess([] {
        static RefusingBackend refusing;
        Logger* const a = Logger::getLogger("a");
        Logger* const b = Logger::getLogger("b");
        Logger::installBackend(&refusing);
        refusing.refused = "b";
        EXPECT_THROW(CapturedLog(), std::runtime_error);
        EXPECT_FALSE(a->isLevelActive(LOG_LEVEL_WARNING));
        EXPECT_FALSE(b->isLevelActive(LOG_LEVEL_WARNING));
        a->info("dropped");

        refusing.refused.clear();
        const CapturedLog captured;
        ZOL_LOG(a, LOG_LEVEL_TRACE) << "from a";
        ZOL_LOG(b, LOG_LEVEL_TRACE) << "from b";
        EXPECT_EQ(PlainContainer::textsOf(captured, "a"), Lines{"from a"});
        EXPECT_EQ(PlainContainer::textsOf(captured, "b"), Lines{"from b"});
    });
}

TEST(CapturedLogs, AThousandInARowLeaveNothingBehind) {
    inFreshProcess([] {
        static support::CountingBackend other;
        const support::Installed installed(other);
        Logger* const logger = Logger::getLogger("orders");
        logger->minLogLevel(LOG_LEVEL_WARNING);
        const auto captureOnce = [logger] {
            CapturedLog captured;
            for (int message = 0; message < 20; ++message) {
                ZOL_LOG(logger, LOG_LEVEL_TRACE)
                    << "a text that needs memory of its own: " << message;
            }
            EXPECT_EQ(captured.size(), 20U) << "one channel delivers each message once";
        };
        captureOnce();
        captureOnce();
        const int asked = other.asked;
        const std::size_t heapBytes = support::ProcessResources::now().heapBytes;
        for (int i = 0; i < 1000; ++i) {
            captureOnce();
        }
        if (support::ProcessResources::memoryIsOurs) {
            EXPECT_LE(support::ProcessResources::now().heapBytes,
                      heapBytes + lessThanABlockForEach);
        }
        EXPECT_EQ(other.asked, asked) << "there was no further installation";
        EXPECT_TRUE(logger->isLevelActive(LOG_LEVEL_WARNING));
        EXPECT_FALSE(logger->isLevelActive(static_cast<LoggingLevel>(LOG_LEVEL_WARNING - 1)));
    });
}

TEST(CapturedLogs, DropMessagesAtOnceWhileThereIsNone) {
    {
        const CapturedLog captured; // constructed and destroyed
    }
    Logger* const logger = Logger::getLogger("orders");
    const auto logMuch = [logger] {
        for (int i = 0; i < 1000; ++i) {
            doLog(logger, LOG_LEVEL_ERROR,
                  "a text that is longer than a string holds within itself");
        }
    };
    logMuch();
    const std::size_t heapBytes = support::ProcessResources::now().heapBytes;
    logMuch();
    if (support::ProcessResources::memoryIsOurs) {
        EXPECT_LE(support::ProcessResources::now().heapBytes, heapBytes + lessThanABlockForEach);
    }
}

} // namespace
