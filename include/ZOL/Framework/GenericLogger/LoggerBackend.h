#pragma once

#include "ZOL/Framework/Export.h"
#include "ZOL/Framework/GenericLogger/LoggingChannel.h"

namespace ZOL::Framework::GenericLogger {

/// A plug-in's side of logging: opens a channel for each logger that it wants to serve.
///
/// A plug-in is a dynamic library named `<Name>_r.dll` (or `<Name>_r.so`) that exports one
/// unmangled function:
///
///     extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend();
///
/// It is called with the logging lock held, once for each load by name, and may return null to
/// offer nothing. What it returns belongs to whoever asked for the load.
///
/// The order of the virtual operations is a binary contract.
class ZOL_FRAMEWORK_API LoggerBackend {
public:
    LoggerBackend();
    LoggerBackend(const LoggerBackend& other);
    LoggerBackend& operator=(const LoggerBackend& other);

    /// Never called by the library. Uninstall a back end before destroying it, and keep its
    /// channels alive: loggers use them until the next installation of any back end.
    virtual ~LoggerBackend();

    /// Opens a channel for the logger of that name. Asked for every logger again whenever any back
    /// end is installed, so the same name comes more than once; the answer may be the same channel
    /// or a new one, and an old one is forgotten without a call on it.
    ///
    /// Called with the logging lock held; it may call back into any logger.
    ///
    /// @param name the logger's name, valid only during the call.
    /// @return a channel that stays the back end's own, or null to decline.
    ///
    /// An exception passes to the caller of getLogger or installBackend.
    virtual LoggingChannel* createChannel(const char* name) = 0;
};

static_assert(sizeof(LoggerBackend) == sizeof(void*), "plug-ins know it as a virtual table");

} // namespace ZOL::Framework::GenericLogger
