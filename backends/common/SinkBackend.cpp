#include "SinkBackend.h"

#include <algorithm>
#include <exception>
#include <new>
#include <utility>

#include "Diagnostics.h"
#include "Process.h"
#include "Text.h"

namespace ZOL::Backends {

namespace {

/// Memory that is kept for the lines of the next messages.
constexpr std::size_t maxKeptBytes = std::size_t{64} * 1024;
/// Of " [" and "] " around the logger.
constexpr std::size_t separatorsSize = 4;

/// Reports the unknown flags of the pattern in one line.
std::string readPattern(const Settings& settings) {
    std::string pattern = settings.text("pattern");
    std::string unknown;
    for (const std::string& flag : unknownFlags(pattern)) {
        unknown += (unknown.empty() ? "\"" : ", \"") + flag + "\"";
    }
    if (!unknown.empty()) {
        reportToStderr(settings.backend(),
                       "the property " + settings.backend() + ".pattern contains " + unknown +
                           " and not only % with one of " + std::string(knownFlags()) +
                           "; writing " + unknown + " as it is");
    }
    return pattern;
}

spdlog::pattern_time_type readTimeType(const Settings& settings) {
    return settings.choice("time") == "utc" ? spdlog::pattern_time_type::utc
                                            : spdlog::pattern_time_type::local;
}

} // namespace

BackendConfiguration::BackendConfiguration(Settings readSettings, const OptionsReader& readOptions,
                                           DropCounter& drops)
    : settings(std::move(readSettings)), filter(settings.levels("levels")) {
    const WriterOptions options = readOptions(settings);
    maxLineBytes = options.maxLineBytes;
    hasWorker = options.hasWorker;
    writer =
        options.factory({settings.backend(), readPattern(settings), readTimeType(settings), drops});
}

SinkChannel::SinkChannel(const char* logger, SinkBackend& backend)
    : backend_(backend),
      logger_(logger),
      escapedLogger_(escaped(logger)),
      prefixLevel_(Framework::GenericLogger::LOG_LEVEL_DEFAULT) {
    setPrefix(prefixLevel_);
}

void SinkChannel::setPrefix(Framework::GenericLogger::LoggingLevel level) {
    const std::string name = levelName(level);
    prefix_.reserve(name.size() + escapedLogger_.size() + separatorsSize);
    prefix_.assign(name).append(" [").append(escapedLogger_).append("] ");
    prefixLevel_ = level;
}

void SinkChannel::log(Framework::GenericLogger::LoggingLevel level, const char* text) {
    if (level < minLevel_) {
        return;
    }
    try {
        if (level != prefixLevel_) {
            setPrefix(level);
        }
        backend_.write(level, escapedLogger_, prefix_, text);
    } catch (...) {
        backend_.countOutOfMemory(); // the host must not see an exception
    }
}

SinkBackend::SinkBackend(Settings settings, OptionsReader readOptions)
    : readOptions_(std::move(readOptions)),
      drops_(settings.backend()),
      configuration_(std::move(settings), readOptions_, drops_) {}

void SinkBackend::update(Settings settings) {
    if (nextConfiguration_ != nullptr && settings.hasSameValues(nextConfiguration_->settings)) {
        return;
    }
    if (settings.hasSameValues(configuration_.settings)) {
        nextConfiguration_.reset();
        return;
    }
    nextConfiguration_ =
        std::make_unique<BackendConfiguration>(std::move(settings), readOptions_, drops_);
}

bool SinkBackend::hasWorker() const noexcept {
    return configuration_.hasWorker ||
           (nextConfiguration_ != nullptr && nextConfiguration_->hasWorker);
}

void SinkBackend::applyUpdate() noexcept {
    configuration_ = std::move(*nextConfiguration_);
    nextConfiguration_.reset();
    for (const auto& channel : channels_) {
        channel.second->applyFilter(configuration_.filter);
    }
}

void SinkBackend::write(Framework::GenericLogger::LoggingLevel level, std::string_view logger,
                        std::string_view prefix, std::string_view text) {
    line_.assign(prefix);
    appendEscaped(line_, text);
    truncateEscaped(line_, configuration_.maxLineBytes);
    const std::string_view line = line_;
    configuration_.writer->write(
        {level, logger, line, line.substr(std::min(prefix.size(), line.size()))});
    if (line_.capacity() > maxKeptBytes) {
        line_ = std::string();
    }
}

Framework::GenericLogger::LoggingChannel* SinkBackend::createChannel(const char* name) {
    if (nextConfiguration_ != nullptr) {
        applyUpdate();
    }
    try {
        std::unique_ptr<SinkChannel>& channel = channels_[name];
        if (channel == nullptr) {
            channel = std::make_unique<SinkChannel>(name, *this);
            channel->applyFilter(configuration_.filter);
        }
        return channel.get();
    } catch (...) {
        reportToStderr(configuration_.settings.backend(),
                       "there is no memory for the channel of a logger; its messages are not "
                       "written");
        return nullptr;
    }
}

namespace {

SinkBackend* backend = nullptr; ///< the one of this module

/// Finishes the back end and reports the drops when the static objects of the plug-in are
/// destroyed.
struct AtExit {
    AtExit() = default;
    AtExit(const AtExit&) = delete;
    AtExit& operator=(const AtExit&) = delete;
    ~AtExit() {
        backend->finish();
        backend->reportDropsAtExit();
    }
};

void finishBackend() {
    backend->finish();
}

} // namespace

SinkBackend* createSinkBackend(const char* name, OptionsReader readOptions) noexcept {
    try {
        Settings settings(name);
        if (backend != nullptr) {
            backend->update(std::move(settings));
        } else {
            backend = new SinkBackend(std::move(settings), std::move(readOptions));
            static const AtExit atExit;
        }
        if (backend->hasWorker() && keepModuleLoaded()) {
            static const bool isRegistered = (callAtExit(finishBackend), true);
            static_cast<void>(isRegistered);
        }
    } catch (const std::bad_alloc&) {
        reportToStderr(name, "there is no memory for the settings");
    } catch (const std::exception& error) {
        reportToStderr(name, error.what());
    } catch (...) {
        reportToStderr(name, "the settings cannot be read");
    }
    return backend;
}

} // namespace ZOL::Backends
