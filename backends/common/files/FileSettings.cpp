#include "files/FileSettings.h"

namespace ZOL::Backends {

RotatingLogSettings readFileSettings(const Settings& settings) {
    RotatingLogSettings result;
    result.path = settings.path("path");
    result.maxBytes = settings.size("size");
    const std::optional<long long> hour = settings.optionalNumber("hour");
    const long long minute = settings.number("minute");
    if (hour) {
        result.clock = RotationClock(static_cast<int>(*hour), static_cast<int>(minute));
    }
    result.retention.count = static_cast<std::size_t>(settings.number("count"));
    result.retention.days = static_cast<unsigned>(settings.number("days"));
    result.retention.bytes = settings.size("bytes");
    result.flush = settings.flush("flush");
    result.isCompressed = settings.choice("compress") == "gzip";
    if (settings.has("mode")) {
        result.mode = settings.mode("mode");
    }
    return result;
}

} // namespace ZOL::Backends
