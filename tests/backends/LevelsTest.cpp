#include "Levels.h"

#include <limits>
#include <string>
#include <utility>
#include <vector>

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

using InvalidRules = std::vector<InvalidRule>;

LevelFilter filterOf(std::string_view text) {
    InvalidRules invalidRules;
    LevelFilter filter(text, invalidRules);
    EXPECT_TRUE(invalidRules.empty()) << text;
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

TEST(LevelFilter, ComparesThePrefixInItsWholeLength) {
    const std::string name(1000, 'x');
    const LevelFilter filter = filterOf(name + "=ERROR");
    EXPECT_FALSE(filter.isEnabled(name, LOG_LEVEL_INFO));
    EXPECT_TRUE(filter.isEnabled(name.substr(1), LOG_LEVEL_INFO));
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
    for (const char* name : {"a=b", "a=", "a,b c=d", "a=xyz-1:2/3"}) {
        const LevelFilter filter = filterOf(std::string(name) + "=ERROR");
        EXPECT_FALSE(filter.isEnabled(name, LOG_LEVEL_INFO)) << name;
        EXPECT_TRUE(filter.isEnabled("a", LOG_LEVEL_INFO)) << name;
    }
}

TEST(LevelFilter, IgnoresBlanksAndLineBreaksAroundRules) {
    const LevelFilter filter = filterOf("\n =ERROR;\r\n\torders = TRACE ;\n");
    EXPECT_TRUE(filter.isEnabled("orders", LOG_LEVEL_TRACE));
    EXPECT_FALSE(filter.isEnabled("stock", LOG_LEVEL_WARNING));
}

TEST(LevelFilter, AcceptsBlanksCommasAndLineBreaksInALoggerName) {
    for (const char* name : {"two words", "a,b", "a|b", "two\nlines", "a\r\nb", "a\tb"}) {
        const LevelFilter filter = filterOf(std::string(name) + "=ERROR");
        EXPECT_FALSE(filter.isEnabled(name, LOG_LEVEL_INFO)) << name;
        EXPECT_TRUE(filter.isEnabled("a", LOG_LEVEL_INFO)) << name;
        EXPECT_TRUE(filter.isEnabled("two", LOG_LEVEL_INFO)) << name;
    }
}

TEST(LevelFilter, RejectsRulesWithAnotherSeparator) {
    for (const char* text :
         {"=WARNING,orders=TRACE", "=WARNING orders=TRACE", "=WARNING, orders=TRACE",
          "a=WARNING|orders=TRACE", "a=WARNING\torders=TRACE", "a=WARNING\norders=TRACE",
          "=WARNING,a=b=TRACE", "a=1\rorders=TRACE", "=ERROR,a=INFO,orders=TRACE",
          "=WARNING,orders=TRCE"}) {
        InvalidRules invalidRules;
        const LevelFilter filter(std::string(text) + ";b=ERROR", invalidRules);
        ASSERT_EQ(invalidRules.size(), 1U) << text;
        EXPECT_EQ(invalidRules[0].text, text);
        EXPECT_STREQ(invalidRules[0].expected, "rules that are separated by semicolons");
        EXPECT_FALSE(filter.isEnabled("b", LOG_LEVEL_INFO)) << text;
        EXPECT_TRUE(filter.isEnabled("a", LOG_LEVEL_INFO)) << text;
    }
}

TEST(LevelFilter, KeepsTheValidRulesBesideInvalidOnes) {
    InvalidRules invalidRules;
    const LevelFilter filter("orders;a=LOUD;b=ERROR;=;c=TRCAE", invalidRules);
    ASSERT_EQ(invalidRules.size(), 4U);
    const char* const expected[][2] = {
        {"orders", ""}, {"a=LOUD", ""}, {"=", ""}, {"c=TRCAE", "TRACE"}};
    for (std::size_t i = 0; i < invalidRules.size(); ++i) {
        EXPECT_EQ(invalidRules[i].text, expected[i][0]);
        EXPECT_EQ(invalidRules[i].suggestion, expected[i][1]);
        EXPECT_STREQ(invalidRules[i].expected, "PREFIX=LEVEL with a level such as INFO, 35 or OFF");
    }
    EXPECT_FALSE(filter.isEnabled("b", LOG_LEVEL_INFO));
    EXPECT_TRUE(filter.isEnabled("a", LOG_LEVEL_TRACE));
}

TEST(LevelFilter, SuggestsEveryWordForALevel) {
    for (const auto& [word, suggestion] : {std::pair<const char*, const char*>{"WARN", "WARNING"},
                                           {"errors", "ERROR"},
                                           {"t", "TRACE"},
                                           {"DEBUGG", "DEBUG"},
                                           {"INFORMATION", "INFO"},
                                           {"FATLA", "FATAL"},
                                           {"NON", "NONE"},
                                           {"OF", "OFF"},
                                           {"LOUD", ""},
                                           {"3x", ""}}) {
        InvalidRules invalidRules;
        const LevelFilter filter("a=" + std::string(word), invalidRules);
        ASSERT_EQ(invalidRules.size(), 1U) << word;
        EXPECT_EQ(invalidRules[0].suggestion, suggestion) << word;
    }
}

} // namespace
