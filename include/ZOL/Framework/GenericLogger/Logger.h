#pragma once

#include <exception>

#include "ZOL/Framework/Export.h"
#include "ZOL/Framework/GenericLogger/LogStream.h"
#include "ZOL/Framework/GenericLogger/LoggingLevel.h"

namespace ZOL::Framework::GenericLogger {

class LoggerBackend;
class LoggerImpl;

/// A named, process-wide log source. Every module of the process gets the same object for a name.
///
/// Messages go to the channels that the installed back ends opened for the logger's name. As long
/// as there are none, the first 101 wait in the logger's cache; one more leaves a line there that
/// tells of the overflow, and the rest are lost. An installation delivers the cache, oldest first.
///
/// Any thread may call any operation. All of them but isLevelActive, minLogLevel and enableLogging
/// take the one logging lock of the process, which is recursive, waits without limit and is held
/// across every call into plug-ins; any of those may throw boost::thread_resource_error if the
/// lock cannot wait, std::bad_alloc, and whatever a plug-in throws. Null texts are not tested for.
class Logger {
public:
    Logger(const Logger&) = delete;
    Logger& operator=(const Logger&) = delete;

    /// The logger of that name, made if it is new; never null, and valid until the process ends.
    /// Names are case-sensitive, and the empty name is a name like any other.
    ZOL_FRAMEWORK_API static Logger* getLogger(const char* name);

    /// Installs a back end at the end of the list, rebuilds the channels of every logger from all
    /// installed back ends and delivers every cache, all before it returns. The back end stays its
    /// owner's and must outlive its installation.
    ///
    /// Throws LoggerBackendLoadError if backend is null or already installed. If a plug-in throws,
    /// the back end stays installed and the loggers from that one on, by name, are not refreshed.
    ZOL_FRAMEWORK_API static void installBackend(LoggerBackend* backend);

    /// loadBackend, then installBackend; the lock is free in between. The result is the caller's.
    /// Null, with nothing installed, if the plug-in's entry point returned null.
    ZOL_FRAMEWORK_API static LoggerBackend* installBackend(const char* name);

    /// Takes a back end off the list; one that is not on it, null included, is no error. Calls
    /// nothing on it and rebuilds nothing: its channels go on receiving messages until the next
    /// installation, or until the last back end has left.
    ZOL_FRAMEWORK_API static void uninstallBackend(LoggerBackend* backend);

    /// Loads the dynamic library `<name>_r.dll` (or `<name>_r.so`), found by the platform's search
    /// rules, and returns what its createBackend returned, null included, without installing it.
    /// The result is the caller's; the library stays loaded until the process ends.
    ///
    /// Throws std::runtime_error if there is no such library or no createBackend in it.
    ZOL_FRAMEWORK_API static LoggerBackend* loadBackend(const char* name);

    /// Whether a message of that level is worth building. The only reader of the minimum level: a
    /// message that is handed over all the same is logged. Takes no lock.
    ZOL_FRAMEWORK_HOT_API bool isLevelActive(LoggingLevel level);

    /// Sets the minimum level. Takes no lock, and gives no ordering to other threads.
    ZOL_FRAMEWORK_API void minLogLevel(LoggingLevel level);

    /// False drops what would go to the channels now; what would be cached is cached all the same.
    /// Takes no lock, and gives no ordering to other threads.
    ZOL_FRAMEWORK_API void enableLogging(bool enable);

    /// Starts a line, as do the next five at their levels, without asking isLevelActive.
    LogStream trace(const char* text = "") { return log(LOG_LEVEL_TRACE, text); }
    LogStream debug(const char* text = "") { return log(LOG_LEVEL_DEBUG, text); }
    LogStream info(const char* text = "") { return log(LOG_LEVEL_INFO, text); }
    LogStream warning(const char* text = "") { return log(LOG_LEVEL_WARNING, text); }
    LogStream error(const char* text = "") { return log(LOG_LEVEL_ERROR, text); }
    LogStream fatal(const char* text = "") { return log(LOG_LEVEL_FATAL, text); }

    /// The same for any level. At LOG_LEVEL_NONE the line is dropped.
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

static_assert(sizeof(Logger) == sizeof(void*), "modules know it as one pointer");

LogStream::~LogStream() noexcept(false) {
    if (level_ != LOG_LEVEL_NONE && !stream_.bad()) {
        try {
            logger_->do_log(level_, stream_.c_str());
        } catch (...) {
            // A second exception beside one that is already on its way would end the process.
            if (std::uncaught_exceptions() == 0) {
                throw;
            }
        }
    }
}

/// What ZOL_LOG asks and then does, with the macro's arguments evaluated once.
class LogGate {
public:
    LogGate(Logger* logger, LoggingLevel level)
        : logger_(logger), level_(level), open_(logger->isLevelActive(level)) {}

    bool isOpen() const { return open_; }
    void close() { open_ = false; }
    LogStream line() const { return logger_->log(level_); }

private:
    Logger* logger_;
    LoggingLevel level_;
    bool open_;
};

} // namespace ZOL::Framework::GenericLogger

/// Logs a line if its level is active, and evaluates nothing of the line if it is not:
///
///     ZOL_LOG(logger, LOG_LEVEL_DEBUG) << "state " << expensiveDump();
#define ZOL_LOG(logger, level)                                                                     \
    for (::ZOL::Framework::GenericLogger::LogGate zolLogGate((logger), (level));                   \
         zolLogGate.isOpen(); zolLogGate.close())                                                  \
    zolLogGate.line()
