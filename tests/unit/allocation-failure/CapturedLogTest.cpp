#include "ZOL/Testing/CapturedLog.h"

#include <string>

#include "FreshProcess.h"
#include "OutOfMemory.h"

#include "ZOL/Framework/GenericLogger/Logger.h"

using support::inFreshProcess;
using support::longText;
using namespace ZOL::Framework::GenericLogger;
using ZOL::Testing::CapturedLog;

namespace {

// In processes of their own: the kit's back end stays installed.
class CapturedLogOutOfMemory : public support::OutOfMemory {
protected:
    static bool isOpen(Logger* logger) { return logger->isLevelActive(LOG_LEVEL_TRACE); }
};
ZOL_INSTANTIATE_OUT_OF_MEMORY(CapturedLogOutOfMemory);

TEST_P(CapturedLogOutOfMemory, AFirstOneThatFailsLeavesTheLevelsAndTheSwitch) {
    inFreshProcess([this] {
        Logger* const a = Logger::getLogger("a name that is longer than a short string, a");
        Logger* const b = Logger::getLogger("a name that is longer than a short string, b");
        const std::size_t failures = sweep(
            [&] {
                const CapturedLog captured;
                EXPECT_TRUE(isOpen(a));
                EXPECT_TRUE(isOpen(b));
            },
            [&] {
                EXPECT_FALSE(isOpen(a));
                EXPECT_FALSE(isOpen(b));
                onAnotherThread([] { Logger::getLogger("another thread's"); });
            },
            anyNumber);
        EXPECT_GE(failures, 7U) << "back end, list of captures, list of back ends, two entries ...";

        const CapturedLog captured;
        b->info(longText);
        ASSERT_EQ(captured.size(), 1U);
        EXPECT_EQ(captured[0].text, longText);
    });
}

TEST_P(CapturedLogOutOfMemory, ALaterOneThatFailsLeavesNothingBehind) {
    inFreshProcess([this] {
        {
            const CapturedLog captured; // constructed and destroyed
        }
        Logger* const logger = Logger::getLogger("orders");
        EXPECT_GE(sweep(
                      [&] {
                          const CapturedLog captured;
                          EXPECT_TRUE(isOpen(logger));
                      },
                      [&] { EXPECT_FALSE(isOpen(logger)); }),
                  1U);
    });
}

TEST_P(CapturedLogOutOfMemory, ANestedOneThatFailsLeavesTheOuterOneAsItIs) {
    inFreshProcess([this] {
        Logger* const logger = Logger::getLogger("orders");
        const CapturedLog outer;
        std::size_t logged = 0;
        EXPECT_GE(sweep([&] { const CapturedLog nested; },
                        [&] {
                            EXPECT_TRUE(isOpen(logger));
                            logger->info("seen");
                            ++logged;
                        },
                        anyNumber),
                  1U);
        EXPECT_EQ(outer.size(), logged);
    });
}

TEST_P(CapturedLogOutOfMemory, AMessageThatFailsIsInNoneOfThemAndTheOthersAre) {
    inFreshProcess([this] {
        Logger* const logger = Logger::getLogger("a name that is longer than a short string");
        const CapturedLog outer;
        const CapturedLog inner;
        EXPECT_GE(sweep([&] { logger->info(longText); },
                        [&] {
                            EXPECT_EQ(outer.size(), 0U);
                            EXPECT_EQ(inner.size(), 0U);
                        },
                        anyNumber),
                  4U)
            << "name and text, twice";
        ASSERT_EQ(outer.size(), 1U);
        ASSERT_EQ(inner.size(), 1U);
        EXPECT_EQ(outer[0].text, longText);
        EXPECT_EQ(inner[0].text, longText);
    });
}

TEST_P(CapturedLogOutOfMemory, ANewLoggerWhoseMakingFailsIsOpenAfterTheNextAttempt) {
    inFreshProcess([this] {
        Logger* logger = nullptr;
        {
            const CapturedLog captured;
            EXPECT_GE(sweep([&] { logger = Logger::getLogger(longText); }, [] {}, anyNumber), 5U);
            EXPECT_TRUE(isOpen(logger));
        }
        EXPECT_FALSE(isOpen(logger));
        EXPECT_TRUE(logger->isLevelActive(LOG_LEVEL_DEFAULT));
    });
}

} // namespace
