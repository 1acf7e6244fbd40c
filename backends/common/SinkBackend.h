#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "ZOL/Framework/GenericLogger/LoggingChannel.h"

#include "Diagnostics.h"
#include "Levels.h"
#include "RecordWriter.h"
#include "Settings.h"

namespace ZOL::Backends {

/// Describes the writer of a back end by its settings.
using OptionsReader = std::function<WriterOptions(const Settings& settings)>;

/// What the settings of a back end mean.
struct BackendConfiguration {
    BackendConfiguration(Settings readSettings, const OptionsReader& readOptions,
                         DropCounter& drops);

    Settings settings;
    LevelFilter filter;
    std::size_t maxLineBytes;
    bool hasWorker;
    std::unique_ptr<RecordWriter> writer;
};

class SinkBackend;

/// The channel of one logger. Makes each message one line of valid UTF-8, "LEVEL [logger] text",
/// which is %v in the pattern.
class SinkChannel final : public Framework::GenericLogger::LoggingChannel {
public:
    /// The back end outlives its channels.
    SinkChannel(const char* logger, SinkBackend& backend);

    void release() override {}
    void log(Framework::GenericLogger::LoggingLevel level, const char* text) override;

    /// Takes over the back end's level for this logger.
    void applyFilter(const LevelFilter& filter) noexcept { minLevel_ = filter.minLevel(logger_); }

private:
    void setPrefix(Framework::GenericLogger::LoggingLevel level);

    SinkBackend& backend_;
    std::string logger_;
    std::string escapedLogger_;
    std::string prefix_; ///< "LEVEL [logger] ": most messages have the level of the one before
    Framework::GenericLogger::LoggingLevel prefixLevel_;
    long long minLevel_ = 0;
};

/// A ready-made back end. The framework's logging lock serialises its calls.
class SinkBackend final : public Framework::GenericLogger::LoggerBackend {
public:
    SinkBackend(Settings settings, OptionsReader readOptions);

    /// Takes over settings that differ from the present ones. They take effect with the next
    /// createChannel, for all channels: until then, loggers use the channels as before. If it
    /// throws, the back end is unchanged.
    void update(Settings settings);

    /// Returns the same channel for the same name; null if out of memory.
    Framework::GenericLogger::LoggingChannel* createChannel(const char* name) override;

    void countOutOfMemory() noexcept { drops_.addOutOfMemory(); }

    /// Whether the present or the next writer has a worker.
    bool hasWorker() const noexcept;

    /// The process ends, see RecordWriter. Any thread may call it, at the same time as others.
    void finish() noexcept { configuration_.writer->finish(); }

    void reportDropsAtExit() const noexcept { drops_.reportAtExit(); }

private:
    friend class SinkChannel;

    void applyUpdate() noexcept;

    /// Writes a message of a channel. The prefix is that of its line, see SinkChannel.
    void write(Framework::GenericLogger::LoggingLevel level, std::string_view logger,
               std::string_view prefix, std::string_view text);

    OptionsReader readOptions_;
    DropCounter drops_;
    BackendConfiguration configuration_;
    std::unique_ptr<BackendConfiguration> nextConfiguration_; ///< null if nothing has changed
    std::map<std::string, std::unique_ptr<SinkChannel>> channels_;
    std::string line_; ///< kept from one message to the next for its memory
};

/// What createBackend of a plug-in does: creates the one back end of this module, and later returns
/// it again with settings that are read anew. Null, with a report, if it cannot be created; the
/// next call tries again. Calls are serialised by the caller.
///
/// The back end is never destroyed, because messages may arrive after the static destructors of the
/// plug-in have run.
SinkBackend* createSinkBackend(const char* name, OptionsReader readOptions) noexcept;

} // namespace ZOL::Backends
