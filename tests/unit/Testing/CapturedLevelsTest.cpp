#include <climits>
#include <memory>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "FreshProcess.h"

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Testing/CapturedLog.h"

using namespace ZOL::Framework::GenericLogger;
using support::inFreshProcess;
using ZOL::Testing::CapturedLog;

namespace {

constexpr auto lowest = static_cast<LoggingLevel>(INT_MIN);

bool isOpen(Logger* logger) {
    return logger->isLevelActive(lowest);
}

/// A name that no logger has, also when the tests are repeated.
std::string newName() {
    static int count = 0;
    return "new logger " + std::to_string(++count);
}

testing::AssertionResult hasMinimum(Logger* logger, int level) {
    if (!logger->isLevelActive(static_cast<LoggingLevel>(level))) {
        return testing::AssertionFailure() << "the minimum level is above " << level;
    }
    if (level != INT_MIN && logger->isLevelActive(static_cast<LoggingLevel>(level - 1))) {
        return testing::AssertionFailure() << "the minimum level is below " << level;
    }
    return testing::AssertionSuccess();
}

TEST(CapturedLevels, AreOpenedAndRestoredExactly) {
    Logger* const logger = Logger::getLogger("levels");
    for (const int level : {INT_MIN, INT_MIN + 1, -1000000, -5, -1, 0, 1, 10, 49, 50, 51, 60, 12345,
                            INT_MAX - 1, INT_MAX}) {
        logger->minLogLevel(static_cast<LoggingLevel>(level));
        {
            const CapturedLog captured;
            EXPECT_TRUE(isOpen(logger));
        }
        EXPECT_TRUE(hasMinimum(logger, level));
    }
}

TEST(CapturedLevels, OfAllLoggersAreOpenedAlsoWhenTheBackEndIsInstalledOnlyNow) {
    inFreshProcess([] {
        Logger* const a = Logger::getLogger("a");
        Logger* const b = Logger::getLogger("b");
        a->minLogLevel(LOG_LEVEL_TRACE);
        b->minLogLevel(static_cast<LoggingLevel>(INT_MAX));
        {
            const CapturedLog captured;
            EXPECT_TRUE(isOpen(a));
            EXPECT_TRUE(isOpen(b));
            a->minLogLevel(LOG_LEVEL_FATAL); // it is no new logger
        }
        EXPECT_TRUE(hasMinimum(a, LOG_LEVEL_TRACE));
        EXPECT_TRUE(hasMinimum(b, INT_MAX));
    });
}

TEST(CapturedLevels, OfLoggersThatWereMadeSinceTheLastOneAreOpenedAndRestored) {
    {
        const CapturedLog captured; // constructed and destroyed
    }
    Logger* const logger = Logger::getLogger(newName().c_str());
    EXPECT_TRUE(hasMinimum(logger, LOG_LEVEL_DEFAULT));
    logger->minLogLevel(LOG_LEVEL_INFO);
    {
        const CapturedLog captured;
        EXPECT_TRUE(isOpen(logger));
        logger->minLogLevel(LOG_LEVEL_FATAL); // not its level before
    }
    EXPECT_TRUE(hasMinimum(logger, LOG_LEVEL_INFO));
}

TEST(CapturedLevels, OfANewLoggerAreOpenedBeforeTheProgramHasIt) {
    const std::string name = newName();
    Logger* logger = nullptr;
    {
        const CapturedLog captured;
        logger = Logger::getLogger(name.c_str());
        EXPECT_TRUE(isOpen(logger));
        EXPECT_EQ(Logger::getLogger(name.c_str()), logger);
        ZOL_LOG(logger, LOG_LEVEL_TRACE) << "seen";
        ASSERT_EQ(captured.size(), 1U);
        EXPECT_EQ(captured[0].text, "seen");
    }
    EXPECT_TRUE(hasMinimum(logger, LOG_LEVEL_DEFAULT));
    {
        const CapturedLog captured;
        logger->minLogLevel(LOG_LEVEL_FATAL);
    }
    EXPECT_TRUE(hasMinimum(logger, LOG_LEVEL_DEFAULT)) << "it is no new one any more";
}

TEST(CapturedLevels, ThatTheProgramSetForItsNewLoggerStay) {
    Logger* logger = nullptr;
    {
        const CapturedLog captured;
        logger = Logger::getLogger(newName().c_str());
        logger->minLogLevel(LOG_LEVEL_WARNING);
        EXPECT_TRUE(hasMinimum(logger, LOG_LEVEL_WARNING));
    }
    EXPECT_TRUE(hasMinimum(logger, LOG_LEVEL_WARNING));
}

TEST(CapturedLevels, ThatTheProgramSetForItsNewLoggerStayAlsoIfANestedOneOpensItAgain) {
    Logger* logger = nullptr;
    {
        const CapturedLog captured;
        logger = Logger::getLogger(newName().c_str());
        logger->minLogLevel(LOG_LEVEL_WARNING);
        const CapturedLog nested;
        EXPECT_TRUE(isOpen(logger));
    }
    EXPECT_TRUE(hasMinimum(logger, LOG_LEVEL_WARNING));
}

TEST(CapturedLevels, StayOpenUntilTheLastOneEnds) {
    Logger* const logger = Logger::getLogger("overlapping");
    logger->minLogLevel(static_cast<LoggingLevel>(-3));
    auto first = std::make_unique<CapturedLog>();
    auto second = std::make_unique<CapturedLog>();
    first.reset();
    EXPECT_TRUE(isOpen(logger));
    auto third = std::make_unique<CapturedLog>();
    second.reset();
    EXPECT_TRUE(isOpen(logger));
    third.reset();
    EXPECT_TRUE(hasMinimum(logger, -3));
}

TEST(CapturedLevels, ThatTheProgramSetMeanwhileAreOpenedByANestedOneAndReplacedAtTheEnd) {
    Logger* const logger = Logger::getLogger("set meanwhile");
    logger->minLogLevel(LOG_LEVEL_WARNING);
    {
        const CapturedLog captured;
        logger->minLogLevel(LOG_LEVEL_FATAL);
        EXPECT_FALSE(isOpen(logger));
        const CapturedLog nested;
        EXPECT_TRUE(isOpen(logger));
    }
    EXPECT_TRUE(hasMinimum(logger, LOG_LEVEL_WARNING));
}

/// Throws once for each new logger that it is armed for.
class OnceRefusingBackend final : public LoggerBackend {
public:
    LoggingChannel* createChannel(const char*) override {
        if (armed) {
            armed = false;
            throw std::runtime_error("refused");
        }
        return nullptr;
    }

    bool armed = false;
};

TEST(CapturedLevels, OfALoggerWhoseFirstAttemptFailedAreOpened) {
    inFreshProcess([] {
        static OnceRefusingBackend refusing;
        Logger* logger = nullptr;
        {
            const CapturedLog captured;
            Logger::installBackend(&refusing); // asked after the kit's back end
            refusing.armed = true;
            EXPECT_THROW(Logger::getLogger("second attempt"), std::runtime_error);
            logger = Logger::getLogger("second attempt");
            EXPECT_TRUE(isOpen(logger));
        }
        EXPECT_TRUE(hasMinimum(logger, LOG_LEVEL_DEFAULT));
    });
}

TEST(CapturedLevels, OfALoggerWhoseMakingFailedBeforeAreOpenedByTheNextOne) {
    inFreshProcess([] {
        static OnceRefusingBackend refusing;
        {
            const CapturedLog captured; // constructed and destroyed
        }
        Logger::installBackend(&refusing);
        refusing.armed = true;
        EXPECT_THROW(Logger::getLogger("known by name alone"), std::runtime_error);
        const CapturedLog captured;
        EXPECT_TRUE(isOpen(Logger::getLogger("known by name alone")));
    });
}

} // namespace
