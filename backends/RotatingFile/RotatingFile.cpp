// The RotatingFile back end: every message as one line in a file, which makes way for a new one
// when it has reached its size: zol.log, and before it zol.1.log, zol.2.log...

#include <spdlog/sinks/rotating_file_sink.h>

#include "SinkBackend.h"
#include "WholeLines.h"

using namespace ZOL::Backends;

namespace {

constexpr std::size_t defaultSize = std::size_t{10} * 1024 * 1024;
constexpr long long defaultCount = 5;
constexpr long long greatestCount = 1000; // a rotation renames them all

SinkPlan plan(const Settings& settings) {
    const spdlog::filename_t path = settings.path("path", "zol.log");
    const std::size_t size = settings.size("size", defaultSize);
    const auto count =
        static_cast<std::size_t>(settings.number("count", defaultCount, 0, greatestCount));
    SinkPlan result;
    result.make = [path, size, count] {
        return std::make_unique<spdlog::sinks::rotating_file_sink_st>(path, size, count, false,
                                                                      wholeLines());
    };
    return result;
}

} // namespace

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    static auto* const backend = makeSinkBackend("RotatingFile", plan);
    return backend;
}
