// The RotatingFile back end: writes each message as one line to a file. A file that has reached its
// size is renamed, and a new one is begun: zol.log, and before it zol.1.log, zol.2.log...

#include <spdlog/details/os.h> // which the next one needs but does not include
#include <spdlog/sinks/rotating_file_sink-inl.h>

#include "FileEvents.h"
#include "ReopeningSink.h"
#include "SinkBackend.h"

using namespace ZOL::Backends;

namespace {

WriterOptions readOptions(const Settings& settings) {
    const spdlog::filename_t path = settings.path("path").native();
    const std::size_t size = settings.size("size");
    const auto count = static_cast<std::size_t>(settings.number("count"));
    const FileEvents events;
    SinkOptions options;
    options.factory = [events, path, size, count] {
        return std::make_unique<spdlog::sinks::rotating_file_sink_st>(path, size, count, false,
                                                                      events.handlers());
    };
    options.signals = [events] {
        return events.signals();
    };
    return writerOptions(options);
}

} // namespace

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    return createSinkBackend("RotatingFile", readOptions);
}
