#pragma once

#include "ZOL/Framework/Export.h"

namespace ZOL::Framework::CrisisLogging {

class CrisisLoggerImpl;

/// The log of last resort, for when the ordinary logging cannot be trusted: one file at a fixed
/// path, "C:\zol.log" ("/var/log/zol.log" on Linux), with no back end and no settings in between.
/// Each line has left the process when log returns. Any thread may use it.
class CrisisLogger {
public:
    CrisisLogger(const CrisisLogger&) = delete;
    CrisisLogger& operator=(const CrisisLogger&) = delete;

    /// The process's crisis logger, made at the first call, which opens the file for appending and
    /// keeps everybody else from opening it until the process ends.
    ///
    /// Throws FrameworkException if the file cannot be opened, also because another process has
    /// it; a later call tries again. Throws std::bad_alloc, and boost::thread_resource_error if
    /// its lock cannot wait.
    ZOL_FRAMEWORK_API static CrisisLogger& instance();

    /// Appends the local time without the date, " - ", the message as it is and a line end. A line
    /// that cannot be written, on a full disk say, is lost without a word. Throws std::bad_alloc,
    /// with nothing written, and boost::thread_resource_error. Null is not tested for.
    ZOL_FRAMEWORK_API void log(const char* message);

    /// Closes the file. Nothing calls it: the crisis logger lives as long as the process, and
    /// whoever destroys it all the same leaves instance with a dangling one.
    ZOL_FRAMEWORK_API ~CrisisLogger();

private:
    ZOL_FRAMEWORK_API CrisisLogger();

    CrisisLoggerImpl* impl_;

    ZOL_FRAMEWORK_API static CrisisLogger* crisisLoggerSingleton_;
};

static_assert(sizeof(CrisisLogger) == sizeof(void*), "modules know it as one pointer");

} // namespace ZOL::Framework::CrisisLogging
