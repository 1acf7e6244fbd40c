#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "ZOL/Framework/GenericLogger/LoggingChannel.h"

#include "Levels.h"
#include "ReopeningSink.h"
#include "Settings.h"

namespace ZOL::Backends {

/// Describes the sink of a back end by its settings.
using OptionsReader = std::function<SinkOptions(const Settings& settings)>;

/// What the settings of a back end mean.
struct SinkConfiguration {
    SinkConfiguration(Settings readSettings, const OptionsReader& readOptions);

    Settings settings;
    SinkOptions options;
    std::size_t maxLineBytes; ///< also if the options have been moved to the sink
    LevelFilter filter;
    std::string pattern;
    spdlog::pattern_time_type timeType;
};

/// The channel of one logger. Makes each message one line of valid UTF-8, "LEVEL [logger] text",
/// which is %v in the sink's pattern.
class SinkChannel final : public Framework::GenericLogger::LoggingChannel {
public:
    /// The sink and the configuration belong to the back end and outlive its channels.
    SinkChannel(const char* logger, ReopeningSink& sink, const SinkConfiguration& configuration);

    void release() override {}
    void log(Framework::GenericLogger::LoggingLevel level, const char* text) override;

private:
    std::string logger_;
    std::string escapedLogger_;
    std::string bracketedLogger_; ///< " [logger] "
    ReopeningSink& sink_;
    const SinkConfiguration& configuration_;
};

/// A back end that writes to one sink. The framework's logging lock serialises its calls.
class SinkBackend final : public Framework::GenericLogger::LoggerBackend {
public:
    SinkBackend(Settings settings, OptionsReader readOptions);

    /// Takes over settings that differ from the present ones. They take effect with the next
    /// createChannel, for all channels: until then, loggers use the channels as before. If it
    /// throws, the back end is unchanged.
    void update(Settings settings);

    /// Returns the same channel for the same name; null if out of memory.
    Framework::GenericLogger::LoggingChannel* createChannel(const char* name) override;

    void reportDropsAtExit() const noexcept { sink_.reportDropsAtExit(); }

private:
    void applyUpdate() noexcept;

    OptionsReader readOptions_;
    SinkConfiguration configuration_;
    std::unique_ptr<SinkConfiguration> nextConfiguration_; ///< null if nothing has changed
    ReopeningSink sink_;
    std::map<std::string, std::unique_ptr<SinkChannel>> channels_;
};

/// What createBackend of a plug-in does: creates the one back end of this module, and later returns
/// it again with settings that are read anew. Null, with a report, if it cannot be created; the
/// next call tries again. Calls are serialised by the caller.
///
/// The back end is never destroyed, because messages may arrive after the static destructors of the
/// plug-in have run.
SinkBackend* createSinkBackend(const char* name, OptionsReader readOptions) noexcept;

} // namespace ZOL::Backends
