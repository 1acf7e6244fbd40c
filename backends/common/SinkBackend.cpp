#include "SinkBackend.h"

#include <exception>
#include <new>
#include <utility>

#include "Diagnostics.h"
#include "Text.h"

namespace ZOL::Backends {

SinkConfiguration::SinkConfiguration(Settings readSettings, OptionsReader readOptions)
    : settings(std::move(readSettings)),
      options(readOptions(settings)),
      maxLineBytes(options.maxLineBytes),
      filter(settings.levels("levels")),
      pattern(settings.text("pattern")) {}

SinkChannel::SinkChannel(const char* logger, ReopeningSink& sink,
                         const SinkConfiguration& configuration)
    : logger_(logger),
      escapedLogger_(escaped(logger)),
      sink_(sink),
      configuration_(configuration) {}

void SinkChannel::log(Framework::GenericLogger::LoggingLevel level, const char* text) {
    try {
        if (!configuration_.filter.isEnabled(logger_, level)) {
            return;
        }
        std::string line = levelName(level);
        line.append(" [").append(escapedLogger_).append("] ");
        appendEscaped(line, text);
        truncateEscaped(line, configuration_.maxLineBytes);
        sink_.write(escapedLogger_, sinkLevel(level), line);
    } catch (...) {
        sink_.countDropped("there is no memory for them"); // the host must not see an exception
    }
}

SinkBackend::SinkBackend(Settings settings, OptionsReader readOptions)
    : readOptions_(readOptions),
      configuration_(std::move(settings), readOptions),
      sink_(configuration_.settings.backend(), configuration_.pattern, configuration_.options) {}

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
    sink_.reconfigure(std::move(configuration_.pattern), std::move(configuration_.options));
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
        sink_.countDropped("there is no memory for a channel");
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
            backend = new SinkBackend(std::move(settings), readOptions);
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
