#include "LevelRules.h"

#include <gtest/gtest.h>

using namespace ZOL::Backends;
using namespace ZOL::Framework::GenericLogger;

namespace {

using Refused = std::vector<std::string>;

LevelRules rulesOf(std::string_view text) {
    Refused refused;
    LevelRules rules(text, refused);
    EXPECT_EQ(refused, Refused());
    return rules;
}

TEST(LevelRules, LetEverythingOutIfThereAreNone) {
    EXPECT_TRUE(LevelRules().letOut("orders", static_cast<LoggingLevel>(-1)));
    EXPECT_TRUE(rulesOf("").letOut("orders", LOG_LEVEL_NONE));
}

TEST(LevelRules, GoByTheLongestPrefixInWhateverOrderTheyStand) {
    for (const char* text :
         {"=ERROR;orders=INFO;orders.stock=TRACE", "orders.stock=TRACE ; orders = INFO; =ERROR;"}) {
        const LevelRules rules = rulesOf(text);
        EXPECT_TRUE(rules.letOut("orders.stock.low", LOG_LEVEL_TRACE));
        EXPECT_FALSE(rules.letOut("orders", LOG_LEVEL_DEBUG));
        EXPECT_TRUE(rules.letOut("orders2", LOG_LEVEL_INFO)) << "a prefix is of letters";
        EXPECT_FALSE(rules.letOut("order", LOG_LEVEL_WARNING));
        EXPECT_TRUE(rules.letOut("order", LOG_LEVEL_ERROR));
    }
}

TEST(LevelRules, LeaveLoggersWithoutARuleAlone) {
    EXPECT_TRUE(rulesOf("orders=ERROR").letOut("stock", LOG_LEVEL_TRACE));
}

TEST(LevelRules, SilenceWithOff) {
    const LevelRules rules = rulesOf("noisy=off");
    EXPECT_FALSE(rules.letOut("noisy", static_cast<LoggingLevel>(0x7FFFFFFF)));
    EXPECT_TRUE(rules.letOut("others", LOG_LEVEL_TRACE));
}

TEST(LevelRules, TakeTheLaterOfTwoForTheSamePrefix) {
    EXPECT_FALSE(rulesOf("a=TRACE;a=ERROR").letOut("a", LOG_LEVEL_INFO));
}

TEST(LevelRules, TakeAnEqualsSignWithinALoggersName) {
    const LevelRules rules = rulesOf("a=b=ERROR");
    EXPECT_FALSE(rules.letOut("a=b", LOG_LEVEL_INFO));
    EXPECT_TRUE(rules.letOut("a", LOG_LEVEL_INFO));
}

TEST(LevelRules, KeepTheGoodOnesBesideBadOnes) {
    Refused refused;
    const LevelRules rules("orders;a=LOUD;b=ERROR;=", refused);
    EXPECT_EQ(refused, (Refused{"orders", "a=LOUD", "="}));
    EXPECT_FALSE(rules.letOut("b", LOG_LEVEL_INFO));
    EXPECT_TRUE(rules.letOut("a", LOG_LEVEL_TRACE));
}

} // namespace
