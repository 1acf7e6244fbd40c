#include <climits>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Testing/CapturedLog.h"

using namespace ZOL::Framework::GenericLogger;
using testing::PrintToString;
using ZOL::Testing::CapturedLog;
using ZOL::Testing::CapturedMessage;

namespace {

std::string levelText(int level) {
    return PrintToString(static_cast<LoggingLevel>(level));
}

TEST(CapturedText, OfLevelsIsTheirName) {
    EXPECT_EQ(levelText(LOG_LEVEL_NONE), "NONE");
    EXPECT_EQ(levelText(LOG_LEVEL_TRACE), "TRACE");
    EXPECT_EQ(levelText(LOG_LEVEL_DEBUG), "DEBUG");
    EXPECT_EQ(levelText(LOG_LEVEL_INFO), "INFO");
    EXPECT_EQ(levelText(LOG_LEVEL_WARNING), "WARNING");
    EXPECT_EQ(levelText(LOG_LEVEL_ERROR), "ERROR");
    EXPECT_EQ(levelText(LOG_LEVEL_FATAL), "FATAL");
}

TEST(CapturedText, OfOtherLevelsIsTheNextLowerNameAndTheDistance) {
    EXPECT_EQ(levelText(35), "INFO+5");
    EXPECT_EQ(levelText(19), "TRACE+9");
    EXPECT_EQ(levelText(61), "FATAL+1");
    EXPECT_EQ(levelText(9), "TRACE-1");
    EXPECT_EQ(levelText(-1), "TRACE-11");
    EXPECT_EQ(levelText(INT_MAX), "FATAL+2147483587");
    EXPECT_EQ(levelText(INT_MIN), "TRACE-2147483658");
}

TEST(CapturedText, OfAMessageIsOneLine) {
    EXPECT_EQ(PrintToString(CapturedMessage{LOG_LEVEL_ERROR, "orders", "sold out"}),
              "ERROR [orders] sold out");
    EXPECT_EQ(PrintToString(CapturedMessage{LOG_LEVEL_INFO, "", "a\nb\tc\x1b[0m\x7f \xc3\xa4"}),
              "INFO [] a\\nb\\x09c\\x1b[0m\\x7f \xc3\xa4");
}

TEST(CapturedText, OfALogIsTheNumberThenALineForEach) {
    CapturedLog captured;
    EXPECT_EQ(PrintToString(captured), "no messages");
    Logger::getLogger("orders")->info("one");
    EXPECT_EQ(PrintToString(captured), "1 message:\n    INFO [orders] one\n");
    Logger::getLogger("billing")->fatal("two");
    EXPECT_EQ(PrintToString(captured),
              "2 messages:\n    INFO [orders] one\n    FATAL [billing] two\n");
}

TEST(CapturedText, OfALongLogIsTheFirstAndLastHundred) {
    CapturedLog captured;
    std::string first;
    std::string last;
    for (int i = 1; i <= 201; ++i) {
        Logger::getLogger("orders")->info() << i;
        const std::string line = "    INFO [orders] " + std::to_string(i) + "\n";
        first += i <= 100 ? line : "";
        last += i > 101 ? line : "";
        if (i == 200) {
            const std::string all = PrintToString(captured);
            EXPECT_EQ(all.find("more"), std::string::npos);
            EXPECT_NE(all.find("] 100\n    INFO [orders] 101\n"), std::string::npos);
        }
    }
    EXPECT_EQ(PrintToString(captured), "201 messages:\n" + first + "    ... 1 more ...\n" + last);
}

} // namespace
