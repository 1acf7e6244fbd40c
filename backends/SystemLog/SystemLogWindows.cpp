// The SystemLog back end on Windows: every message is an event in the event log.

#include <spdlog/sinks/win_eventlog_sink.h>

#include "SinkBackend.h"

using namespace ZOL::Backends;

namespace {

constexpr std::size_t longestEvent = 30000; // Windows takes no more than 31839 characters

SinkPlan plan(const Settings& settings) {
    const std::string source = settings.text("source", "ZOL");
    SinkPlan result;
    result.make = [source] {
        return std::make_unique<spdlog::sinks::win_eventlog_sink_st>(source);
    };
    result.pattern = "%v"; // an event has a time of its own
    result.lineEnd = "";
    result.longestLine = longestEvent;
    return result;
}

} // namespace

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    static auto* const backend = makeSinkBackend("SystemLog", plan);
    return backend;
}
