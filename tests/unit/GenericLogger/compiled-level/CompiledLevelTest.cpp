// Statements below the lowest compiled level.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Statements.h"

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Testing/LogMatchers.h"

using namespace ZOL::Framework::GenericLogger;
using namespace ZOL::Testing;
using testing::Each;
using testing::ElementsAre;
using testing::Ge;
using testing::StartsWith;

namespace {

using testing::_;

TEST(CompiledLevel, EvaluatesNothingOfStatementsBelowIt) {
    const CapturedLog captured;
    int evaluated = 0;
    executeConstantLevels(Logger::getLogger("logger"), evaluated);
#if defined(_MSC_VER) && !defined(__clang__)
    EXPECT_LE(evaluated, 7) << "the logger at most";
#else
    EXPECT_EQ(evaluated, 0);
#endif
}

TEST(CompiledLevel, CompilesStatementsFromItUp) {
    const CapturedLog captured;
    int evaluated = 0;
    executeConstantLevels(Logger::getLogger("logger"), evaluated);
    EXPECT_THAT(captured, Logged(LOG_LEVEL_WARNING, _, "compiled number"));
    EXPECT_THAT(captured, Each(IsMessage(Ge(LOG_LEVEL_WARNING), _, StartsWith("compiled "))));
}

TEST(CompiledLevel, FiltersLevelsThatTheCompilerDoesNotKnow) {
    const CapturedLog captured;
    int evaluated = 0;
    for (const int level : {10, 39, 40, 41}) {
        executeLevel(Logger::getLogger("logger"), [&] {
            ++evaluated;
            return static_cast<LoggingLevel>(level);
        });
    }
    EXPECT_THAT(captured,
                ElementsAre(IsMessage(static_cast<LoggingLevel>(40), _, "level of the run"),
                            IsMessage(static_cast<LoggingLevel>(41), _, "level of the run")));
    EXPECT_EQ(evaluated, 4) << "once for each execution";
}

TEST(CompiledLevel, LeavesTheAccessorsAlone) {
    const CapturedLog captured;
    logWithAccessor(Logger::getLogger("logger"));
    EXPECT_THAT(captured, ElementsAre(IsMessage(LOG_LEVEL_TRACE, _, "accessor")));
}

TEST(CompiledLevel, IsASettingOfOneTranslationUnit) {
    const CapturedLog captured;
    ZOL_LOG(Logger::getLogger("logger"), LOG_LEVEL_TRACE) << "here";
    EXPECT_THAT(captured, Logged(LOG_LEVEL_TRACE, _, "here"));
}

} // namespace
