// The DailyFile back end: writes each message as one line to the file of the day,
// zol_2026-01-31.log.

#include <cstdint>

#include <spdlog/sinks/daily_file_sink.h>

#include "SinkBackend.h"
#include "TornLine.h"

using namespace ZOL::Backends;

namespace {

constexpr long long lastHour = 23;
constexpr long long lastMinute = 59;
constexpr long long maxDays = 10000;

SinkOptions readOptions(const Settings& settings) {
    const spdlog::filename_t path = settings.path("path", "zol.log").native();
    const auto hour = static_cast<int>(settings.number("hour", 0, 0, lastHour));
    const auto minute = static_cast<int>(settings.number("minute", 0, 0, lastMinute));
    const auto days = static_cast<std::uint16_t>(settings.number("days", 0, 0, maxDays));
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
