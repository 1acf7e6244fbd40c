#pragma once

#include "ZOL/Requirements.h"

namespace ZOL::Framework::GenericLogger {

/// The importance of a message; a larger number is more important. Levels are compared as signed
/// numbers, and any other int is a level too. The values are compiled into every module that logs.
enum LoggingLevel : int {
    LOG_LEVEL_NONE = 0, ///< No level: a LogStream drops its line, a logger caches the message.
    LOG_LEVEL_TRACE = 10,
    LOG_LEVEL_DEBUG = 20,
    LOG_LEVEL_INFO = 30,
    LOG_LEVEL_WARNING = 40, ///< Also the level of the overflow entry of a cache.
    LOG_LEVEL_ERROR = 50,
    LOG_LEVEL_FATAL = 60,
    LOG_LEVEL_DEFAULT = 50 ///< The minimum level of a new logger.
};

} // namespace ZOL::Framework::GenericLogger
