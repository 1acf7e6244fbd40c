// The DebugOutput back end on Windows: writes each message as one line to the debugger, or to a
// viewer of debugger output such as DebugView.

#include <spdlog/sinks/msvc_sink.h>

#include "SinkBackend.h"

using namespace ZOL::Backends;

namespace {

SinkOptions readOptions(const Settings&) {
    SinkOptions options;
    options.factory = [] {
        return std::make_unique<spdlog::sinks::msvc_sink_st>();
    };
    options.pattern = "%v";
    options.lineEnd = "\n";
    return options;
}

} // namespace

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    static auto* const backend = createSinkBackend("DebugOutput", readOptions);
    return backend;
}
