// Statements below and above the lowest compiled level. A test looks for their texts in the object
// file, and CompiledLevelTest.cpp executes them. The build defines ZOL_LOG_COMPILED_LEVEL.

#include "Statements.h"

#include <chrono>

#include "ZOL/Framework/GenericLogger/LogStatements.h"

namespace Levels = ZOL::Framework::GenericLogger;

void executeConstantLevels(Levels::Logger* logger, int& evaluated) {
    const auto log = [&] { // NOLINT(clang-analyzer-deadcode.DeadStores): nothing calls it
        ++evaluated;
        return logger;
    };
    ZOL_LOG(log(), Levels::LOG_LEVEL_INFO) << "removed ZOL_LOG" << ++evaluated;
    ZOL_LOG_EVERY_N(log(), Levels::LOG_LEVEL_INFO, ++evaluated) << "removed _EVERY_N";
    ZOL_LOG_FIRST_N(log(), Levels::LOG_LEVEL_INFO, ++evaluated) << "removed _FIRST_N";
    ZOL_LOG_ONCE(log(), Levels::LOG_LEVEL_TRACE) << "removed _ONCE";
    ZOL_LOG_EVERY(log(), Levels::LOG_LEVEL_TRACE, std::chrono::seconds(++evaluated))
        << "removed _EVERY";
    ZOL_LOG_IF(log(), Levels::LOG_LEVEL_DEBUG, ++evaluated) << "removed _IF";
    ZOL_LOG_HERE(log(), static_cast<Levels::LoggingLevel>(39)) << "removed _HERE";

    ZOL_LOG(logger, Levels::LOG_LEVEL_WARNING) << "compiled ZOL_LOG";
    ZOL_LOG_EVERY_N(logger, Levels::LOG_LEVEL_WARNING, 2) << "compiled _EVERY_N";
    ZOL_LOG_FIRST_N(logger, Levels::LOG_LEVEL_WARNING, 2) << "compiled _FIRST_N";
    ZOL_LOG_ONCE(logger, Levels::LOG_LEVEL_ERROR) << "compiled _ONCE";
    ZOL_LOG_EVERY(logger, Levels::LOG_LEVEL_ERROR, std::chrono::seconds(1)) << "compiled _EVERY";
    ZOL_LOG_IF(logger, Levels::LOG_LEVEL_FATAL, true) << "compiled _IF";
    ZOL_LOG(logger, static_cast<Levels::LoggingLevel>(40)) << "compiled number";
}

void executeLevel(Levels::Logger* logger, const std::function<Levels::LoggingLevel()>& level) {
    ZOL_LOG(logger, level()) << "level of the run";
}

void logWithAccessor(Levels::Logger* logger) {
    logger->trace("accessor");
}
