// Statements below the lowest compiled level.

#include <string>

#include <gtest/gtest.h>

#include "LoggerFixture.h"
#include "Statements.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

class CompiledLevel : public support::LoggerFixture {
protected:
    CompiledLevel() {
        installBackend("a");
        log->minLogLevel(LOG_LEVEL_TRACE);
    }

    Logger* const log = logger();
};

TEST_F(CompiledLevel, EvaluatesNothingOfStatementsBelowIt) {
    int evaluated = 0;
    executeConstantLevels(log, evaluated);
    EXPECT_EQ(evaluated, 0);
}

TEST_F(CompiledLevel, CompilesStatementsFromItUp) {
    int evaluated = 0;
    executeConstantLevels(log, evaluated);
    EXPECT_EQ(journal.back(), line("a", LOG_LEVEL_WARNING, "compiled number"));
    for (const std::string& entry : journal) {
        EXPECT_NE(entry.find(" compiled "), std::string::npos) << entry;
    }
}

TEST_F(CompiledLevel, FiltersLevelsThatTheCompilerDoesNotKnow) {
    int evaluated = 0;
    for (const int level : {10, 39, 40, 41}) {
        executeLevel(log, [&] {
            ++evaluated;
            return static_cast<LoggingLevel>(level);
        });
    }
    EXPECT_EQ(journal, (support::Journal{line("a", 40, "level of the run"),
                                         line("a", 41, "level of the run")}));
    EXPECT_EQ(evaluated, 4) << "once for each execution";
}

TEST_F(CompiledLevel, LeavesTheAccessorsAlone) {
    log->trace("accessor");
    EXPECT_EQ(journal.size(), 1U);
}

TEST_F(CompiledLevel, IsASettingOfOneTranslationUnit) {
    ZOL_LOG(log, LOG_LEVEL_TRACE) << "here";
    EXPECT_EQ(journal.size(), 1U);
}

} // namespace
