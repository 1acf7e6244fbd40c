#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "CountingBackend.h"
#include "DoLog.h"
#include "OutOfMemory.h"
#include "RecordingBackend.h"

#include "ZOL/Framework/GenericLogger/Logger.h"

using support::CountingBackend;
using support::doLog;
using support::Installed;
using support::longText;
using namespace ZOL::Framework::GenericLogger;

namespace {

class LoggerOutOfMemory : public support::OutOfMemory {
protected:
    /// The content of a logger's cache, delivered to a new back end. The cache is empty afterwards.
    static std::vector<std::string> cached(const std::string& name) {
        static std::vector<std::unique_ptr<support::RecordingBackend>> backends; // never destroyed
        static support::Journal journal;
        journal.clear();
        backends.push_back(std::make_unique<support::RecordingBackend>("", journal));
        backends.back()->serves = [name](const std::string& logger) {
            return logger == name;
        };
        Logger::installBackend(backends.back().get());
        Logger::uninstallBackend(backends.back().get());
        std::vector<std::string> lines;
        for (const std::string& line : journal) {
            lines.push_back(line.substr(name.size() + 2));
        }
        return lines;
    }

    static void expectLockFree() {
        onAnotherThread([] { Logger::getLogger("another thread's"); });
    }
};
ZOL_INSTANTIATE_OUT_OF_MEMORY(LoggerOutOfMemory);

TEST_P(LoggerOutOfMemory, GetLoggerEntersNothingAndAsksTheBackEndsAgainAndReleasesNoChannel) {
    static CountingBackend first;
    static CountingBackend second;
    const Installed firstInstalled(first);
    const Installed secondInstalled(second);
    const std::string name = uniqueName();
    Logger* logger = nullptr;
    int askedBefore = 0;

    const std::size_t failures = sweep(
        [&] {
            askedBefore = first.asked + second.asked;
            logger = Logger::getLogger(name.c_str());
        },
        [&] {
            EXPECT_EQ(logger, nullptr);
            expectLockFree();
        });

    EXPECT_GE(failures, 7U) << "logger, block, name, back ends, two channels, entry and its key";
    EXPECT_EQ(first.asked + second.asked, askedBefore + 2) << "no attempt before was remembered";
    EXPECT_EQ(first.released() + second.released(), 0);
    EXPECT_EQ(Logger::getLogger(name.c_str()), logger);
    const int logged = first.logged();
    logger->info() << "works";
    EXPECT_EQ(first.logged(), logged + 1);
    EXPECT_STREQ(second.lastText(), "works");
}

TEST_P(LoggerOutOfMemory, ACachedMessageThatFailsIsNotThereAndTheOthersAre) {
    const std::string name = uniqueName();
    Logger* const logger = Logger::getLogger(name.c_str());
    doLog(logger, LOG_LEVEL_INFO, "before");
    EXPECT_EQ(sweep([&] { doLog(logger, LOG_LEVEL_INFO, longText); },
                    [&] {
                        expectLockFree();
                        doLog(logger, LOG_LEVEL_INFO, "short"); // needs no block of its own
                    }),
              1U);
    EXPECT_EQ(cached(name),
              (std::vector<std::string>{"30 before", "30 short", std::string("30 ") + longText}));
}

TEST_P(LoggerOutOfMemory, AFirstMessageThatFailsIsNotThere) {
    const std::string name = uniqueName();
    Logger* const logger = Logger::getLogger(name.c_str());
    // The storage of the cache may be allocated already, and remains.
    EXPECT_GE(sweep([&] { doLog(logger, LOG_LEVEL_INFO, longText); }, [] { expectLockFree(); },
                    anyNumber),
              1U);
    EXPECT_EQ(cached(name), std::vector<std::string>{std::string("30 ") + longText});
}

TEST_P(LoggerOutOfMemory, AFailedOverflowEntryIsStoredWithTheNextMessage) {
    const std::string name = uniqueName();
    Logger* const logger = Logger::getLogger(name.c_str());
    std::vector<std::string> expected;
    for (int i = 0; i < 101; ++i) {
        doLog(logger, LOG_LEVEL_INFO, "x");
        expected.emplace_back("30 x");
    }
    expected.emplace_back("40 LOG Cache overflow...");
    EXPECT_EQ(sweep([&] { doLog(logger, LOG_LEVEL_INFO, "too many"); }, [] { expectLockFree(); }),
              1U);
    EXPECT_EQ(allocationsOf([&] { doLog(logger, LOG_LEVEL_INFO, longText); }), 0U)
        << "dropped as it is";
    EXPECT_EQ(cached(name), expected);
}

TEST_P(LoggerOutOfMemory, DeliveringAMessageToTwoChannelsNeedsNone) {
    static CountingBackend first;
    static CountingBackend second;
    const Installed firstInstalled(first);
    const Installed secondInstalled(second);
    Logger* const logger = Logger::getLogger(uniqueName().c_str());
    EXPECT_EQ(allocationsOf([&] { doLog(logger, LOG_LEVEL_TRACE, longText); }), 0U);
    EXPECT_STREQ(first.lastText(), longText);
    EXPECT_STREQ(second.lastText(), longText);
    logger->enableLogging(false);
    EXPECT_EQ(allocationsOf([&] { doLog(logger, LOG_LEVEL_TRACE, longText); }), 0U);
}

TEST_P(LoggerOutOfMemory, AKnownLoggerAndItsLevelAndSwitchNeedNone) {
    const std::string name = uniqueName();
    Logger* const logger = Logger::getLogger(name.c_str());
    Logger* found = nullptr;
    bool active = true;
    EXPECT_EQ(allocationsOf([&] {
                  found = Logger::getLogger(name.c_str());
                  found->minLogLevel(LOG_LEVEL_FATAL);
                  active = found->isLevelActive(LOG_LEVEL_ERROR);
                  found->enableLogging(true);
                  ZOL_LOG(found, LOG_LEVEL_ERROR) << std::string(100, 'x');
              }),
              0U);
    EXPECT_EQ(found, logger);
    EXPECT_FALSE(active);
}

/// Installs another back end when its channel receives a message, once for each arm.
class InstallingBackend final : public LoggerBackend {
public:
    explicit InstallingBackend(LoggerBackend& other) : channel_(other) {}

    LoggingChannel* createChannel(const char* name) override {
        return name == prefix ? &channel_ : nullptr;
    }
    void arm() { channel_.armed = true; }

    std::string prefix;

private:
    class Channel final : public LoggingChannel {
    public:
        explicit Channel(LoggerBackend& other) : other_(other) {}
        void release() override {}
        void log(LoggingLevel, const char*) override {
            if (std::exchange(armed, false)) {
                Logger::installBackend(&other_);
            }
        }

        bool armed = false;

    private:
        LoggerBackend& other_;
    };

    Channel channel_;
};

TEST_P(LoggerOutOfMemory, AnInnerFlushThatFailsLosesNoMessageAndOneThatSucceedsKeepsNoMemory) {
    static CountingBackend inner;
    static InstallingBackend outer(inner);
    const std::string name = uniqueName();
    outer.prefix = name;
    inner.prefix = outer.prefix.c_str();
    Logger* const logger = Logger::getLogger(name.c_str());
    const auto flushTwice = [&] {
        outer.arm();
        Logger::installBackend(&outer);
    };
    const auto uninstall = [&] {
        Logger::uninstallBackend(&inner);
        Logger::uninstallBackend(&outer);
    };

    doLog(logger, LOG_LEVEL_INFO, longText);
    int received = inner.logged();
    EXPECT_GE(sweep(
                  flushTwice,
                  [&] {
                      uninstall();
                      expectLockFree();
                      EXPECT_TRUE(!cached(name).empty() || inner.logged() != received);
                      doLog(logger, LOG_LEVEL_INFO, longText);
                      received = inner.logged();
                  },
                  anyNumber),
              3U)
        << "at least the list, a channel and the entries that are kept";
    EXPECT_EQ(inner.logged(), received + 1);
    EXPECT_STREQ(inner.lastText(), longText);
    uninstall();

    const Outcome again = attempt(0, [&] {
        doLog(logger, LOG_LEVEL_INFO, longText);
        flushTwice();
        uninstall();
    });
    EXPECT_EQ(again.blocksLeft, 0);
}

/// Gets the logger that is being made when it is asked for a channel of the name.
class GettingBackend final : public LoggerBackend {
public:
    LoggingChannel* createChannel(const char* logger) override {
        if (name == logger) {
            name.clear();
            Logger::getLogger(logger);
        }
        return nullptr;
    }

    std::string name;
};

TEST_P(LoggerOutOfMemory, ALoggerThatABackEndGetsWhileItIsMadeIsMadeOnce) {
    static GettingBackend getting;
    Logger::installBackend(&getting);
    const std::string plain = uniqueName();
    const std::string nested = uniqueName();
    const Outcome once = attempt(0, [&] { Logger::getLogger(plain.c_str()); });
    getting.name = nested;
    const Outcome twice = attempt(0, [&] { Logger::getLogger(nested.c_str()); });
    Logger::uninstallBackend(&getting);
    EXPECT_TRUE(getting.name.empty());
    EXPECT_GT(once.blocksLeft, 0);
    EXPECT_EQ(twice.blocksLeft, once.blocksLeft);
}

} // namespace
