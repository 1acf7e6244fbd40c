#pragma once

#include "ZOL/Framework/Export.h"
#include "ZOL/Framework/GenericLogger/LoggingChannel.h"

namespace ZOL::Framework::GenericLogger {

/// The interface of a plug-in: it opens a channel for each logger that it serves.
///
/// A plug-in is a dynamic library named `<Name>_r.dll` (`<Name>_r.so` on Linux) that exports one
/// unmangled function:
///
///     extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend();
///
/// The framework calls it with the logging lock held, once for each load by name. It may return
/// null if it has no back end to offer. The caller of Logger::loadBackend or Logger::installBackend
/// owns the result.
///
/// The order of the virtual operations is a binary contract.
class ZOL_FRAMEWORK_API LoggerBackend {
public:
    LoggerBackend();
    LoggerBackend(const LoggerBackend& other);
    LoggerBackend& operator=(const LoggerBackend& other);

    /// Never called by the library. Uninstall a back end before destroying it, but keep its
    /// channels alive: loggers use them until the next installation of any back end.
    virtual ~LoggerBackend();

    /// Opens a channel for the logger with this name. Called for a new logger, and for every logger
    /// each time any back end is installed, so the same name is passed more than once. The result
    /// may be the same channel or a new one; the logger drops its earlier channel without a call on
    /// it.
    ///
    /// Called with the logging lock held; it may call any logger.
    ///
    /// @param name the logger's name, valid only during the call.
    /// @return a channel that the back end owns, or null if it does not serve this logger.
    ///
    /// An exception is passed to the caller of Logger::getLogger or Logger::installBackend.
    virtual LoggingChannel* createChannel(const char* name) = 0;
};

static_assert(sizeof(LoggerBackend) == sizeof(void*), "the size is part of the binary contract");

} // namespace ZOL::Framework::GenericLogger
