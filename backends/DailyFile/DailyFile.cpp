// The DailyFile back end: every message as one line in the file of the day, zol_2026-01-31.log.

#include <cstdint>

#include <spdlog/sinks/daily_file_sink.h>

#include "SinkBackend.h"
#include "WholeLines.h"

using namespace ZOL::Backends;

namespace {

constexpr long long lastHour = 23;
constexpr long long lastMinute = 59;
constexpr long long mostDays = 10000;

SinkPlan plan(const Settings& settings) {
    const spdlog::filename_t path = settings.path("path", "zol.log");
    const auto hour = static_cast<int>(settings.number("hour", 0, 0, lastHour));
    const auto minute = static_cast<int>(settings.number("minute", 0, 0, lastMinute));
    const auto days = static_cast<std::uint16_t>(settings.number("days", 0, 0, mostDays));
    SinkPlan result;
    result.make = [path, hour, minute, days] {
        return std::make_unique<spdlog::sinks::daily_file_sink_st>(path, hour, minute, false, days,
                                                                   wholeLines());
    };
    return result;
}

} // namespace

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    static auto* const backend = makeSinkBackend("DailyFile", plan);
    return backend;
}
