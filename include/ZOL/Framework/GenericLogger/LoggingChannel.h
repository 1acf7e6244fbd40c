#pragma once

#include "ZOL/Framework/Export.h"
#include "ZOL/Framework/GenericLogger/LoggingLevel.h"

namespace ZOL::Framework::GenericLogger {

/// The destination of the messages of one logger. A plug-in implements it, and the logger calls it.
///
/// Every call is made on the thread that called the logger, with the logging lock of the process
/// held. Calls into channels and back ends never overlap. An implementation may call any logger on
/// the same thread. It must not wait for another thread that logs, and must not log to its own
/// logger for every message.
///
/// The order of the virtual operations is a binary contract: the destructor, then release, then
/// log.
class ZOL_FRAMEWORK_API LoggingChannel {
public:
    LoggingChannel();
    LoggingChannel(const LoggingChannel& other);
    LoggingChannel& operator=(const LoggingChannel& other);

protected:
    /// Never called by the library: a channel belongs to the back end that created it.
    virtual ~LoggingChannel();

public:
    /// The logger does not use the channel after this call. Only the destructor of a logger calls
    /// it, which does not run while the process runs. It is not called when the channels of a
    /// logger are rebuilt or when the back end is uninstalled. Do not rely on it.
    virtual void release() = 0;

    /// Receives one message. The logger does not filter by level: messages below its minimum level
    /// are delivered too, and cached ones may have LOG_LEVEL_NONE.
    ///
    /// @param text the message only, zero-terminated; never null if a LogStream sent it. The
    ///     channel adds time stamp, names and line end. The buffer belongs to the caller or to the
    ///     cache and is valid only during the call.
    ///
    /// An exception is passed through the logger to the caller that logged. If it is thrown while a
    /// cache is delivered, all messages stay cached and the next installation delivers them again.
    virtual void log(LoggingLevel level, const char* text) = 0;
};

static_assert(sizeof(LoggingChannel) == sizeof(void*), "the size is part of the binary contract");

} // namespace ZOL::Framework::GenericLogger
