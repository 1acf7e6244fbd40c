#include "SinkBackend.h"

#include <algorithm>
#include <exception>
#include <new>
#include <utility>

#include "Diagnostics.h"
#include "Text.h"

namespace ZOL::Backends {

namespace {

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

SinkConfiguration::SinkConfiguration(Settings readSettings, const OptionsReader& readOptions)
    : settings(std::move(readSettings)),
      options(readOptions(settings)),
      maxLineBytes(options.maxLineBytes),
      filter(settings.levels("levels")),
      pattern(readPattern(settings)),
      timeType(readTimeType(settings)) {}

SinkChannel::SinkChannel(const char* logger, ReopeningSink& sink,
                         const SinkConfiguration& configuration)
    : logger_(logger),
      escapedLogger_(escaped(logger)),
      bracketedLogger_(" [" + escapedLogger_ + "] "),
      sink_(sink),
      configuration_(configuration) {}

void SinkChannel::log(Framework::GenericLogger::LoggingLevel level, const char* text) {
    try {
        if (!configuration_.filter.isEnabled(logger_, level)) {
            return;
        }
        const std::string_view message = text;
        const std::string name = levelName(level);
        std::string line;
        line.reserve(name.size() + bracketedLogger_.size() + message.size());
        line.append(name).append(bracketedLogger_);
        const std::size_t prefixSize = line.size();
        appendEscaped(line, message);
        truncateEscaped(line, configuration_.maxLineBytes);
        const std::string_view lineView = line;
        sink_.write(
            {level, escapedLogger_, line, lineView.substr(std::min(prefixSize, lineView.size()))});
    } catch (...) {
        sink_.countOutOfMemory(); // the host must not see an exception
    }
}

SinkBackend::SinkBackend(Settings settings, OptionsReader readOptions)
    : readOptions_(std::move(readOptions)),
      configuration_(std::move(settings), readOptions_),
      sink_(configuration_.settings.backend(), configuration_.pattern, configuration_.options,
            configuration_.timeType) {}

void SinkBackend::update(Settings settings) {
    if (nextConfiguration_ != nullptr && settings.hasSameValues(nextConfiguration_->settings)) {
        return;
    }
    if (settings.hasSameValues(configuration_.settings)) {
        nextConfiguration_.reset();
        return;
    }
    nextConfiguration_ = std::make_unique<SinkConfiguration>(std::move(settings), readOptions_);
}

void SinkBackend::applyUpdate() noexcept {
    configuration_ = std::move(*nextConfiguration_);
    nextConfiguration_.reset();
    sink_.reconfigure(std::move(configuration_.pattern), std::move(configuration_.options),
                      configuration_.timeType);
}

Framework::GenericLogger::LoggingChannel* SinkBackend::createChannel(const char* name) {
    if (nextConfiguration_ != nullptr) {
        applyUpdate();
    }
    try {
        std::unique_ptr<SinkChannel>& channel = channels_[name];
        if (channel == nullptr) {
            channel = std::make_unique<SinkChannel>(name, sink_, configuration_);
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

/// Reports the drops when the static objects of the plug-in are destroyed.
struct ExitReport {
    explicit ExitReport(const SinkBackend& reportedBackend) : backend(reportedBackend) {}
    ExitReport(const ExitReport&) = delete;
    ExitReport& operator=(const ExitReport&) = delete;
    ~ExitReport() { backend.reportDropsAtExit(); }

    const SinkBackend& backend;
};

} // namespace

SinkBackend* createSinkBackend(const char* name, OptionsReader readOptions) noexcept {
    static SinkBackend* backend = nullptr;
    try {
        Settings settings(name);
        if (backend != nullptr) {
            backend->update(std::move(settings));
        } else {
            backend = new SinkBackend(std::move(settings), std::move(readOptions));
            static const ExitReport exitReport(*backend);
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
