#include "SinkBackend.h"

#include <exception>
#include <utility>

#include "Diagnostics.h"
#include "Text.h"

namespace ZOL::Backends {

SinkChannel::SinkChannel(const char* logger, ReopeningSink& sink, const LevelFilter& filter,
                         std::size_t maxLineBytes)
    : logger_(logger),
      escapedLogger_(escaped(logger)),
      sink_(sink),
      filter_(filter),
      maxLineBytes_(maxLineBytes) {}

void SinkChannel::log(Framework::GenericLogger::LoggingLevel level, const char* text) {
    try {
        if (!filter_.isEnabled(logger_, level)) {
            return;
        }
        std::string line = levelName(level);
        line.append(" [").append(escapedLogger_).append("] ");
        appendEscaped(line, text);
        truncateEscaped(line, maxLineBytes_);
        sink_.write(escapedLogger_, sinkLevel(level), line);
    } catch (...) {
        sink_.countDropped("there is no memory for them"); // the host must not see an exception
    }
}

SinkBackend::SinkBackend(const Settings& settings, const SinkOptions& options)
    : filter_(settings.levels("levels")),
      maxLineBytes_(options.maxLineBytes),
      sink_(settings.backend(), settings.text("pattern"), options) {}

Framework::GenericLogger::LoggingChannel* SinkBackend::createChannel(const char* name) {
    try {
        std::unique_ptr<SinkChannel>& channel = channels_[name];
        if (channel == nullptr) {
            channel = std::make_unique<SinkChannel>(name, sink_, filter_, maxLineBytes_);
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

SinkBackend* createSinkBackend(const char* name,
                               SinkOptions (*readOptions)(const Settings&)) noexcept {
    try {
        const Settings settings(name);
        auto* const backend = new SinkBackend(settings, readOptions(settings));
        static const ExitReport exitReport(*backend);
        return backend;
    } catch (const std::exception& error) {
        reportToStderr(name, error.what());
    } catch (...) {
        reportToStderr(name, "cannot be made");
    }
    return nullptr;
}

} // namespace ZOL::Backends
