// The Console back end: writes each message as one line to standard error,
//
//     2026-01-31 09:05:07.012 WARNING [orders] stock is low
//
// in the colour of its level if standard error is a terminal.

#include <spdlog/sinks/stdout_color_sinks.h>

#include "SinkBackend.h"

using namespace ZOL::Backends;

namespace {

SinkOptions readOptions(const Settings& settings) {
    const std::string_view colour = settings.choice("colour");
    const auto mode = colour == "always"  ? spdlog::color_mode::always
                      : colour == "never" ? spdlog::color_mode::never
                                          : spdlog::color_mode::automatic;
    SinkOptions options;
    options.factory = [mode] {
        return std::make_unique<spdlog::sinks::stderr_color_sink_st>(mode);
    };
    return options;
}

} // namespace

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    static auto* const backend = createSinkBackend("Console", readOptions);
    return backend;
}
