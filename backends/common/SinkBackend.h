#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>

#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "ZOL/Framework/GenericLogger/LoggingChannel.h"

#include "Levels.h"
#include "ReopeningSink.h"
#include "Settings.h"

namespace ZOL::Backends {

/// The channel of one logger. Formats a message as "LEVEL [logger] text", which is %v in the
/// sink's pattern.
class SinkChannel final : public Framework::GenericLogger::LoggingChannel {
public:
    /// The sink and the filter belong to the back end and outlive its channels.
    SinkChannel(const char* logger, ReopeningSink& sink, const LevelFilter& filter,
                std::size_t maxLineBytes);

    void release() override {}
    void log(Framework::GenericLogger::LoggingLevel level, const char* text) override;

private:
    std::string logger_;
    std::string escapedLogger_;
    ReopeningSink& sink_;
    const LevelFilter& filter_;
    std::size_t maxLineBytes_;
};

/// A back end that writes to one sink. The framework's logging lock serialises its calls.
class SinkBackend final : public Framework::GenericLogger::LoggerBackend {
public:
    SinkBackend(const Settings& settings, const SinkOptions& options);

    /// Returns the same channel for the same name; null if out of memory.
    Framework::GenericLogger::LoggingChannel* createChannel(const char* name) override;

    void reportDropsAtExit() const noexcept { sink_.reportDropsAtExit(); }

private:
    LevelFilter filter_;
    std::size_t maxLineBytes_;
    ReopeningSink sink_;
    std::map<std::string, std::unique_ptr<SinkChannel>> channels_;
};

/// Creates what createBackend of a plug-in returns. The back end is never destroyed, because
/// messages may arrive after the static destructors of the plug-in have run. Null, with a report,
/// on failure.
SinkBackend* createSinkBackend(const char* name,
                               SinkOptions (*readOptions)(const Settings&)) noexcept;

} // namespace ZOL::Backends
