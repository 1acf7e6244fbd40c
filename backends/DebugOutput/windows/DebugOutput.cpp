// The DebugOutput back end on Windows: writes each message as one line to the debugger, or to a
// viewer of debugger output such as DebugView.

#include <memory>
#include <type_traits>

#include <spdlog/sinks/msvc_sink.h>

#include "SinkBackend.h"

using namespace ZOL::Backends;

namespace {

/// By default, newer versions of the sink write only if a debugger is attached, and a viewer would
/// receive nothing.
template <typename Sink>
std::unique_ptr<spdlog::sinks::sink> openSink() {
    if constexpr (std::is_constructible_v<Sink, bool>) {
        return std::make_unique<Sink>(false);
    } else {
        return std::make_unique<Sink>();
    }
}

SinkOptions readOptions(const Settings&) {
    SinkOptions options;
    options.factory = openSink<spdlog::sinks::msvc_sink_st>;
    options.lineEnd = "\n";
    return options;
}

} // namespace

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    return createSinkBackend("DebugOutput", readOptions);
}
