#pragma once

namespace ZOL::Framework::GenericLogger {

/// Importance of a message; the larger number is the more important. Levels are compared as signed
/// numbers, and any other int is a level too. The values are compiled into every module that logs.
enum LoggingLevel : int {
    LOG_LEVEL_NONE = 0, ///< No level: a message of it waits in the cache, and a LogStream drops it.
    LOG_LEVEL_TRACE = 10,
    LOG_LEVEL_DEBUG = 20,
    LOG_LEVEL_INFO = 30,
    LOG_LEVEL_WARNING = 40, ///< Also the level of the entry that tells of an overflowed cache.
    LOG_LEVEL_ERROR = 50,
    LOG_LEVEL_FATAL = 60,
    LOG_LEVEL_DEFAULT = 50 ///< Minimum level of every new logger.
};

} // namespace ZOL::Framework::GenericLogger
