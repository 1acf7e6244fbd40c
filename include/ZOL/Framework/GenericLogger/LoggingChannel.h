#pragma once

#include "ZOL/Framework/Export.h"
#include "ZOL/Framework/GenericLogger/LoggingLevel.h"

namespace ZOL::Framework::GenericLogger {

/// Where the messages of one logger go: implemented by a plug-in, called by the logger.
///
/// Every call arrives with the one logging lock of the process held, on the thread of whoever
/// called the logger, and never at the same time as another call into any channel or back end. An
/// implementation may call back into any logger on the same thread; it must not wait for another
/// thread that logs, and it must not log to its own logger on every message.
///
/// The order of the virtual operations is a binary contract: release is called through the slot
/// behind the destructor, log through the one after it.
class ZOL_FRAMEWORK_API LoggingChannel {
public:
    LoggingChannel();
    LoggingChannel(const LoggingChannel& other);
    LoggingChannel& operator=(const LoggingChannel& other);

protected:
    /// Never called by the library: a channel belongs to the back end that made it.
    virtual ~LoggingChannel();

public:
    /// The logger's farewell, after which it never touches the channel again. Called only when a
    /// logger is destroyed, which does not happen while a process runs: not when a logger's
    /// channels are rebuilt, and not when the back end is uninstalled. Do not count on it.
    virtual void release() = 0;

    /// Takes one message. The logger filters nothing by level: messages below its minimum arrive
    /// as well, and what comes out of the cache may carry LOG_LEVEL_NONE.
    ///
    /// @param text the bare message, zero-terminated, never null from a LogStream; time stamp,
    ///     names and line end are the channel's to add. It is the caller's own buffer, or the
    ///     cache's, and valid only during the call; a channel that installs a back end from here
    ///     has lost it by then.
    ///
    /// An exception passes through the logger to whoever logged. Thrown while a cache is being
    /// delivered, it leaves the whole cache in place, to come again at the next installation.
    virtual void log(LoggingLevel level, const char* text) = 0;
};

static_assert(sizeof(LoggingChannel) == sizeof(void*), "plug-ins know it as a virtual table");

} // namespace ZOL::Framework::GenericLogger
