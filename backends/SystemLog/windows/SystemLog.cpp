// The SystemLog back end on Windows: reports each message as an event to the event log.

#include <spdlog/details/os.h> // which the next one needs but does not include
#include <spdlog/sinks/win_eventlog_sink.h>

#include "SinkBackend.h"

using namespace ZOL::Backends;

namespace {

constexpr std::size_t maxEventBytes = 30000; // Windows accepts at most 31839 characters

SinkOptions readOptions(const Settings& settings) {
    const std::string source = settings.text("source");
    SinkOptions options;
    options.factory = [source] {
        return std::make_unique<spdlog::sinks::win_eventlog_sink_st>(source);
    };
    options.lineEnd = "";
    options.maxLineBytes = maxEventBytes;
    return options;
}

} // namespace

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    return createSinkBackend("SystemLog", readOptions);
}
