#pragma once

#include "ZOL/Framework/GenericLogger/LogStatements.h"

/// A statement in an inline function, which two translation units call.
inline void logOnceInline(ZOL::Framework::GenericLogger::Logger* logger) {
    ZOL_LOG_ONCE(logger, ZOL::Framework::GenericLogger::LOG_LEVEL_FATAL) << "inline";
}

/// Calls it in the other translation unit.
void logOnceInlineElsewhere(ZOL::Framework::GenericLogger::Logger* logger);

template <typename T>
void logOnceFor(ZOL::Framework::GenericLogger::Logger* logger) {
    ZOL_LOG_ONCE(logger, ZOL::Framework::GenericLogger::LOG_LEVEL_FATAL)
        << "template " << sizeof(T);
}
