// The DebugOutput back end on Windows: every message as one line to the debugger, or to whoever
// listens in its place.

#include <spdlog/sinks/msvc_sink.h>

#include "SinkBackend.h"

using namespace ZOL::Backends;

namespace {

SinkPlan plan(const Settings&) {
    SinkPlan result;
    result.make = [] {
        return std::make_unique<spdlog::sinks::msvc_sink_st>();
    };
    result.pattern = "%v";
    result.lineEnd = "\n";
    return result;
}

} // namespace

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    static auto* const backend = makeSinkBackend("DebugOutput", plan);
    return backend;
}
