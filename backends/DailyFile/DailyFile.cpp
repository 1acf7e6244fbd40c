// The DailyFile back end: writes each message as one line to the file of the day,
// zol_2026-01-31.log.

#include <cstdint>

#include <spdlog/sinks/daily_file_sink.h>

#include "SinkBackend.h"
#include "TornLine.h"

using namespace ZOL::Backends;

namespace {

SinkOptions readOptions(const Settings& settings) {
    const spdlog::filename_t path = settings.path("path").native();
    const auto hour = static_cast<int>(settings.number("hour"));
    const auto minute = static_cast<int>(settings.number("minute"));
    const auto days = static_cast<std::uint16_t>(settings.number("days"));
    SinkOptions options;
    options.factory = [path, hour, minute, days] {
        return std::make_unique<spdlog::sinks::daily_file_sink_st>(path, hour, minute, false, days,
                                                                   terminateTornLine());
    };
    return options;
}

} // namespace

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    static auto* const backend = createSinkBackend("DailyFile", readOptions);
    return backend;
}
