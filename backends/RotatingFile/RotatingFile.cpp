// The RotatingFile back end: writes each message as one line to a file. A file that has reached its
// size is renamed, and a new one is begun: zol.log, and before it zol.1.log, zol.2.log...

#include <spdlog/details/os.h> // which the next one needs but does not include
#include <spdlog/sinks/rotating_file_sink-inl.h>

#include "SinkBackend.h"
#include "TornLine.h"

using namespace ZOL::Backends;

namespace {

constexpr std::size_t defaultSize = std::size_t{10} * 1024 * 1024;
constexpr long long defaultCount = 5;
constexpr long long maxCount = 1000; // each rotation renames all files

SinkOptions readOptions(const Settings& settings) {
    const spdlog::filename_t path = settings.path("path", "zol.log").native();
    const std::size_t size = settings.size("size", defaultSize);
    const auto count =
        static_cast<std::size_t>(settings.number("count", defaultCount, 0, maxCount));
    SinkOptions options;
    options.factory = [path, size, count] {
        return std::make_unique<spdlog::sinks::rotating_file_sink_st>(path, size, count, false,
                                                                      terminateTornLine());
    };
    return options;
}

} // namespace

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    static auto* const backend = createSinkBackend("RotatingFile", readOptions);
    return backend;
}
