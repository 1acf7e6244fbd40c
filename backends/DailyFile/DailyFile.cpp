// The DailyFile back end: writes each message as one line to the file of the day,
// zol_2026-01-31.log.

#include <cstdint>

#include <spdlog/sinks/daily_file_sink.h>

#include "FileEvents.h"
#include "ReopeningSink.h"
#include "SinkBackend.h"

using namespace ZOL::Backends;

namespace {

WriterOptions readOptions(const Settings& settings) {
    const spdlog::filename_t path = settings.path("path").native();
    const auto hour = static_cast<int>(settings.number("hour"));
    const auto minute = static_cast<int>(settings.number("minute"));
    const auto days = static_cast<std::uint16_t>(settings.number("days"));
    const FileEvents events;
    SinkOptions options;
    options.factory = [events, path, hour, minute, days] {
        return std::make_unique<spdlog::sinks::daily_file_sink_st>(path, hour, minute, false, days,
                                                                   events.handlers());
    };
    options.signals = [events] {
        return events.signals();
    };
    return writerOptions(options);
}

} // namespace

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    return createSinkBackend("DailyFile", readOptions);
}
