#pragma once

#include "ZOL/Framework/Export.h"

namespace ZOL::Framework::CrisisLogging {

class CrisisLoggerImpl;

/// The log of last resort, for use when normal logging cannot be trusted. It writes to one file at
/// a fixed path, "C:\zol.log" ("/var/log/zol.log" on Linux), and needs no back end and no settings.
/// Each line is flushed to the operating system before log returns. Any thread may use it.
class CrisisLogger {
public:
    CrisisLogger(const CrisisLogger&) = delete;
    CrisisLogger& operator=(const CrisisLogger&) = delete;

    /// Returns the crisis logger of the process. The first call creates it: it opens the file for
    /// appending, with exclusive access until the process ends.
    ///
    /// Throws FrameworkException if the file cannot be opened, for example because another process
    /// has it open; a later call tries again. Throws std::bad_alloc, and
    /// boost::thread_resource_error if the lock cannot be acquired.
    ZOL_FRAMEWORK_API static CrisisLogger& instance();

    /// Appends the local time without the date, " - ", the unchanged message and a line end. A line
    /// that cannot be written, for example on a full disk, is dropped silently. Throws
    /// std::bad_alloc and boost::thread_resource_error; nothing is written then. Passing null is
    /// undefined.
    ZOL_FRAMEWORK_API void log(const char* message);

    /// Closes the file. The library never calls it: the crisis logger lives until the process ends.
    /// If a caller destroys it, instance returns a dangling reference from then on.
    ZOL_FRAMEWORK_API ~CrisisLogger();

private:
    ZOL_FRAMEWORK_API CrisisLogger();

    CrisisLoggerImpl* impl_;

    ZOL_FRAMEWORK_API static CrisisLogger* crisisLoggerSingleton_;
};

static_assert(sizeof(CrisisLogger) == sizeof(void*), "the size is part of the binary contract");

} // namespace ZOL::Framework::CrisisLogging
