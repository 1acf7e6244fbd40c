#include "Levels.h"

#include <limits>

#include <gtest/gtest.h>
#include <spdlog/common.h>

using namespace ZOL::Backends;
using namespace ZOL::Framework::GenericLogger;

namespace {

TEST(ParseLevel, AcceptsNamesInAnyCaseAndNumbers) {
    EXPECT_EQ(parseLevel("WARNING"), LOG_LEVEL_WARNING);
    EXPECT_EQ(parseLevel("trace"), LOG_LEVEL_TRACE);
    EXPECT_EQ(parseLevel("None"), LOG_LEVEL_NONE);
    EXPECT_EQ(parseLevel("35"), static_cast<LoggingLevel>(35));
    EXPECT_EQ(parseLevel("-1"), static_cast<LoggingLevel>(-1));
}

TEST(ParseLevel, RejectsEverythingElse) {
    for (const char* text : {"", "WARN", "INFOS", " INFO", "3x", "3 ", "99999999999"}) {
        EXPECT_EQ(parseLevel(text), std::nullopt) << text;
    }
}

TEST(ParseLevel, AcceptsWhatLevelNameReturns) {
    for (const LoggingLevel level : {LOG_LEVEL_NONE, LOG_LEVEL_TRACE, LOG_LEVEL_FATAL}) {
        EXPECT_EQ(parseLevel(levelName(level)), level);
    }
}

TEST(LevelName, CoversTheWholeRangeOfInt) {
    EXPECT_EQ(levelName(static_cast<LoggingLevel>(std::numeric_limits<int>::min())),
              "TRACE-2147483658");
    EXPECT_EQ(levelName(static_cast<LoggingLevel>(std::numeric_limits<int>::max())),
              "FATAL+2147483587");
}

TEST(SinkLevel, IsTheClosestAtOrBelowTheLevel) {
    EXPECT_EQ(sinkLevel(LOG_LEVEL_FATAL), spdlog::level::critical);
    EXPECT_EQ(sinkLevel(static_cast<LoggingLevel>(59)), spdlog::level::err);
    EXPECT_EQ(sinkLevel(LOG_LEVEL_NONE), spdlog::level::trace);
}

using InvalidRules = std::vector<std::string>;

LevelFilter filterOf(std::string_view text) {
    InvalidRules invalidRules;
    LevelFilter filter(text, invalidRules);
    EXPECT_EQ(invalidRules, InvalidRules());
    return filter;
}

TEST(LevelFilter, EnablesEverythingWithoutRules) {
    EXPECT_TRUE(LevelFilter().isEnabled("orders", static_cast<LoggingLevel>(-1)));
    EXPECT_TRUE(filterOf("").isEnabled("orders", LOG_LEVEL_NONE));
}

TEST(LevelFilter, AppliesTheLongestPrefixInAnyOrderOfRules) {
    for (const char* text :
         {"=ERROR;orders=INFO;orders.stock=TRACE", "orders.stock=TRACE ; orders = INFO; =ERROR;"}) {
        const LevelFilter filter = filterOf(text);
        EXPECT_TRUE(filter.isEnabled("orders.stock.low", LOG_LEVEL_TRACE));
        EXPECT_FALSE(filter.isEnabled("orders", LOG_LEVEL_DEBUG));
        EXPECT_TRUE(filter.isEnabled("orders2", LOG_LEVEL_INFO))
            << "a prefix need not end at a dot";
        EXPECT_FALSE(filter.isEnabled("order", LOG_LEVEL_WARNING));
        EXPECT_TRUE(filter.isEnabled("order", LOG_LEVEL_ERROR));
    }
}

TEST(LevelFilter, EnablesLoggersWithoutARule) {
    EXPECT_TRUE(filterOf("orders=ERROR").isEnabled("stock", LOG_LEVEL_TRACE));
}

TEST(LevelFilter, DisablesEveryLevelWithOff) {
    const LevelFilter filter = filterOf("noisy=off");
    EXPECT_FALSE(filter.isEnabled("noisy", static_cast<LoggingLevel>(0x7FFFFFFF)));
    EXPECT_TRUE(filter.isEnabled("others", LOG_LEVEL_TRACE));
}

TEST(LevelFilter, AppliesTheLastRuleOfAPrefix) {
    EXPECT_FALSE(filterOf("a=TRACE;a=ERROR").isEnabled("a", LOG_LEVEL_INFO));
}

TEST(LevelFilter, AcceptsAnEqualsSignInALoggerName) {
    const LevelFilter filter = filterOf("a=b=ERROR");
    EXPECT_FALSE(filter.isEnabled("a=b", LOG_LEVEL_INFO));
    EXPECT_TRUE(filter.isEnabled("a", LOG_LEVEL_INFO));
}

TEST(LevelFilter, KeepsTheValidRulesBesideInvalidOnes) {
    InvalidRules invalidRules;
    const LevelFilter filter("orders;a=LOUD;b=ERROR;=", invalidRules);
    EXPECT_EQ(invalidRules, (InvalidRules{"orders", "a=LOUD", "="}));
    EXPECT_FALSE(filter.isEnabled("b", LOG_LEVEL_INFO));
    EXPECT_TRUE(filter.isEnabled("a", LOG_LEVEL_TRACE));
}

} // namespace
