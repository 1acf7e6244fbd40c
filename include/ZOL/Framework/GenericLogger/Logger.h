#pragma once

#include <exception>

#include "ZOL/Framework/Export.h"
#include "ZOL/Framework/GenericLogger/LogStream.h"
#include "ZOL/Framework/GenericLogger/LoggingLevel.h"

namespace ZOL::Framework::GenericLogger {

class LoggerBackend;
class LoggerImpl;

/// A named, process-wide log source. All modules of the process get the same object for a name.
///
/// A message is delivered to the channels that the installed back ends opened for the logger's
/// name. Without channels, the logger caches the first 101 messages. The next message is replaced
/// by an overflow entry, and later ones are dropped. Installing a back end delivers the cache,
/// oldest message first.
///
/// Any thread may call any operation. All operations except isLevelActive, minLogLevel and
/// enableLogging take the logging lock of the process. It is recursive, has no timeout and is held
/// during every call into a plug-in. These operations may throw boost::thread_resource_error if the
/// lock cannot be acquired, std::bad_alloc, and any exception from a plug-in. A null name is
/// undefined; a null text is logged as "(null)".
class Logger {
public:
    Logger(const Logger&) = delete;
    Logger& operator=(const Logger&) = delete;

    /// Returns the logger with this name, and creates it if necessary. Never null; valid until the
    /// process ends. Names are case-sensitive, and the empty name is valid.
    ZOL_FRAMEWORK_API static Logger* getLogger(const char* name);

    /// Appends a back end to the list of installed ones, then rebuilds the channels of every logger
    /// from all of them and delivers every cache. The caller keeps ownership; the back end must
    /// outlive its installation.
    ///
    /// Throws LoggerBackendLoadError if backend is null or already installed. If a plug-in throws,
    /// the back end stays installed. Loggers are refreshed in the order of their names; the one
    /// whose refresh failed and those after it are not refreshed.
    ZOL_FRAMEWORK_API static void installBackend(LoggerBackend* backend);

    /// Calls loadBackend, then installBackend; the lock is released in between. The caller owns the
    /// result. If the plug-in's createBackend returns null, nothing is installed and the result is
    /// null.
    ZOL_FRAMEWORK_API static LoggerBackend* installBackend(const char* name);

    /// Removes a back end from the list. Null, or a back end that is not in the list, is ignored.
    /// Calls nothing on the back end and rebuilds no channels: its channels receive messages until
    /// the next installation, or until the list is empty.
    ZOL_FRAMEWORK_API static void uninstallBackend(LoggerBackend* backend);

    /// Loads the dynamic library `<name>_r.dll` (`<name>_r.so` on Linux), found by the platform's
    /// search rules, and returns the result of its createBackend, which may be null. Installs
    /// nothing. The caller owns the result; the library stays loaded until the process ends.
    ///
    /// Throws std::runtime_error if the library cannot be loaded or does not export createBackend.
    ZOL_FRAMEWORK_API static LoggerBackend* loadBackend(const char* name);

    /// Returns whether the level is at or above the minimum level, so that callers can skip
    /// building a message. Nothing else reads the minimum level: a message that is logged anyway
    /// is delivered. Takes no lock.
    ZOL_FRAMEWORK_HOT_API bool isLevelActive(LoggingLevel level);

    /// Sets the minimum level. Takes no lock and has no memory ordering.
    ZOL_FRAMEWORK_API void minLogLevel(LoggingLevel level);

    /// With false, messages to channels are dropped; messages to the cache are still cached. Takes
    /// no lock and has no memory ordering.
    ZOL_FRAMEWORK_API void enableLogging(bool enable);

    /// Starts a line at LOG_LEVEL_TRACE, without calling isLevelActive. The next five functions do
    /// the same at their levels.
    LogStream trace(const char* text = "") { return log(LOG_LEVEL_TRACE, text); }
    LogStream debug(const char* text = "") { return log(LOG_LEVEL_DEBUG, text); }
    LogStream info(const char* text = "") { return log(LOG_LEVEL_INFO, text); }
    LogStream warning(const char* text = "") { return log(LOG_LEVEL_WARNING, text); }
    LogStream error(const char* text = "") { return log(LOG_LEVEL_ERROR, text); }
    LogStream fatal(const char* text = "") { return log(LOG_LEVEL_FATAL, text); }

    /// Starts a line at any level, without calling isLevelActive. At LOG_LEVEL_NONE the line is
    /// dropped.
    LogStream log(LoggingLevel level, const char* text = "") {
        return LogStream(this, level, text);
    }

private:
    friend class LogStream;

    explicit Logger(const char* name);
    ~Logger();

    static void refreshAllLoggers();

    ZOL_FRAMEWORK_HOT_API void do_log(LoggingLevel level, const char* text);

    LoggerImpl* impl_;
};

static_assert(sizeof(Logger) == sizeof(void*), "the size is part of the binary contract");

LogStream::~LogStream() noexcept(false) {
    if (level_ != LOG_LEVEL_NONE && !stream_.isIncomplete()) {
        try {
            logger_->do_log(level_, stream_.c_str());
        } catch (...) {
            // A second exception during stack unwinding would terminate the process.
            if (std::uncaught_exceptions() == 0) {
                throw;
            }
        }
    }
}

/// One execution of a ZOL_LOG statement, which logs at most one line. The macro calls isFirst
/// before each turn of its loop, and open in the first turn only.
class LogGate {
public:
    bool isFirst() {
        const bool first = first_;
        first_ = false;
        return first;
    }

    bool open(Logger* logger, LoggingLevel level) {
        logger_ = logger;
        level_ = level;
        return logger->isLevelActive(level);
    }

    /// Does not open for levels below the lowest one.
    bool open(Logger* logger, LoggingLevel level, LoggingLevel lowest) {
        return level >= lowest && open(logger, level);
    }

    LogStream line() const { return logger_->log(level_); }

protected:
    Logger* logger_ = nullptr;
    LoggingLevel level_ = LOG_LEVEL_NONE;

private:
    bool first_ = true;
};

} // namespace ZOL::Framework::GenericLogger

/// Logs a line if its level is active. If it is not, no part of the line is evaluated:
///
///     ZOL_LOG(logger, LOG_LEVEL_DEBUG) << "state " << expensiveDump();
///
/// Further statements, which log some of their executions only, are in a header of their own.
#define ZOL_LOG(logger, level)                                                                     \
    ZOL_DETAIL_LOG(ZOL_DETAIL_JOIN(zolLogGate, __COUNTER__), logger, level)

// Every statement has a gate of its own name: a line may contain another ZOL_LOG, in a lambda, and
// -Wshadow would report two gates of one name.
#define ZOL_DETAIL_LOG(gate, logger, level)                                                        \
    ZOL_DETAIL_LOG_IF_OPEN(::ZOL::Framework::GenericLogger::LogGate, gate, level,                  \
                           ZOL_DETAIL_LOG_OPEN(gate, logger, level))
// NOLINTBEGIN(bugprone-macro-parentheses): gate is a name, Gate a type
#define ZOL_DETAIL_LOG_IF_OPEN(Gate, gate, level, isOpen)                                          \
    for (Gate gate; ZOL_DETAIL_LOG_IS_COMPILED(level) gate.isFirst() && (isOpen);)                 \
    gate.line()
// NOLINTEND(bugprone-macro-parentheses)
#define ZOL_DETAIL_JOIN(left, right) ZOL_DETAIL_JOIN_EXPANDED(left, right)
#define ZOL_DETAIL_JOIN_EXPANDED(left, right) left##right

// ZOL_LOG_COMPILED_LEVEL, if defined before the first header of ZOL, is the lowest level whose
// statements are compiled: a level, or its number. The macros remove statements of a lower level;
// nothing of them is evaluated if the level is a constant.
#if defined(ZOL_LOG_COMPILED_LEVEL)
namespace ZOL::Framework::GenericLogger::detail {
static constexpr auto compiledLevel = static_cast<LoggingLevel>(ZOL_LOG_COMPILED_LEVEL);
}
#define ZOL_DETAIL_LOG_OPEN(gate, logger, level)                                                   \
    (gate).open((logger), (level), ::ZOL::Framework::GenericLogger::detail::compiledLevel)
#if defined(__GNUC__) || defined(__clang__)
// For a constant level this is a constant, so that the compiler removes the statement even if it
// does not optimize.
#define ZOL_DETAIL_LOG_IS_COMPILED(level)                                                          \
    (!__builtin_constant_p(level) ||                                                               \
     (level) >= ::ZOL::Framework::GenericLogger::detail::compiledLevel)&&
#else
#define ZOL_DETAIL_LOG_IS_COMPILED(level)
#endif
#else
#define ZOL_DETAIL_LOG_OPEN(gate, logger, level) (gate).open((logger), (level))
#define ZOL_DETAIL_LOG_IS_COMPILED(level)
#endif
