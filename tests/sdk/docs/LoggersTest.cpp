// The examples of the loggers' page, with what the page says of them.

#include <ios>
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "FreshProcess.h"

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "ZOL/Testing/LogMatchers.h"

using namespace ZOL::Framework::GenericLogger;
using testing::ElementsAre;
using ZOL::Testing::CapturedLog;
using ZOL::Testing::IsMessage;

namespace {

using testing::_;

TEST(Loggers, Logging) {
    const CapturedLog captured;
#include "loggers.inc"
    EXPECT_THAT(captured,
                ElementsAre(IsMessage(LOG_LEVEL_ERROR, _, "out of stock"),
                            IsMessage(LOG_LEVEL_INFO, _, "order 17 from Graz"),
                            IsMessage(LOG_LEVEL_WARNING, _, "pieces: ff"),
                            IsMessage(static_cast<LoggingLevel>(35), _, "any number is a level")));
}

TEST(Loggers, Levels) {
    const CapturedLog captured;
    Logger* const logger = Logger::getLogger("shop.orders");
    logger->minLogLevel(LOG_LEVEL_DEFAULT); // captured has opened it
    int calls = 0;
    const auto expensive = [&calls] {
        return ++calls;
    };
#include "loggers_levels.inc"
    EXPECT_THAT(captured, ElementsAre(IsMessage(LOG_LEVEL_ERROR, _, "sold out"),
                                      IsMessage(LOG_LEVEL_DEBUG, _, "goes out")));
    EXPECT_EQ(calls, 0);
}

TEST(Loggers, Installing) {
    support::inFreshProcess([] { // without the kit's back end
        Logger* const logger = Logger::getLogger("shop.orders");
        testing::internal::CaptureStderr();
#include "loggers_install.inc"
        const std::string written = testing::internal::GetCapturedStderr();
        EXPECT_NE(written.find("to one or the other"), std::string::npos) << written;

        const CapturedLog next;
        EXPECT_THAT(next, ElementsAre(IsMessage(LOG_LEVEL_INFO, _, "waits for the next one")));
    });
}

} // namespace
