#include "LevelName.h"

#include <limits>

#include <gtest/gtest.h>

using namespace ZOL::Backends;
using namespace ZOL::Framework::GenericLogger;

namespace {

TEST(LevelName, ReadsNamesInEitherCaseAndNumbers) {
    EXPECT_EQ(levelOf("WARNING"), LOG_LEVEL_WARNING);
    EXPECT_EQ(levelOf("trace"), LOG_LEVEL_TRACE);
    EXPECT_EQ(levelOf("None"), LOG_LEVEL_NONE);
    EXPECT_EQ(levelOf("35"), static_cast<LoggingLevel>(35));
    EXPECT_EQ(levelOf("-1"), static_cast<LoggingLevel>(-1));
}

TEST(LevelName, KnowsNoOthers) {
    for (const char* text : {"", "WARN", "INFOS", " INFO", "3x", "3 ", "99999999999"}) {
        EXPECT_EQ(levelOf(text), std::nullopt) << text;
    }
}

TEST(LevelName, ReadsWhatItWrites) {
    for (const LoggingLevel level : {LOG_LEVEL_NONE, LOG_LEVEL_TRACE, LOG_LEVEL_FATAL}) {
        EXPECT_EQ(levelOf(levelName(level)), level);
    }
}

TEST(LevelName, NamesTheEndsOfTheRange) {
    EXPECT_EQ(levelName(static_cast<LoggingLevel>(std::numeric_limits<int>::min())),
              "TRACE-2147483658");
    EXPECT_EQ(levelName(static_cast<LoggingLevel>(std::numeric_limits<int>::max())),
              "FATAL+2147483587");
}

TEST(LevelName, HasASinkLevelForEachLevel) {
    EXPECT_EQ(sinkLevel(LOG_LEVEL_FATAL), spdlog::level::critical);
    EXPECT_EQ(sinkLevel(static_cast<LoggingLevel>(59)), spdlog::level::err);
    EXPECT_EQ(sinkLevel(LOG_LEVEL_NONE), spdlog::level::trace);
}

} // namespace
