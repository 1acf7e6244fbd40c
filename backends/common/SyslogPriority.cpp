#include "SyslogPriority.h"

#include <spdlog/common.h>

namespace ZOL::Backends {

namespace {

// As in RFC 5424; Windows has no <syslog.h>.
constexpr int critical = 2;
constexpr int error = 3;
constexpr int warning = 4;
constexpr int informational = 6;
constexpr int debug = 7;

} // namespace

int syslogPriority(spdlog::level::level_enum level) {
    switch (level) {
    case spdlog::level::critical:
        return critical;
    case spdlog::level::err:
        return error;
    case spdlog::level::warn:
        return warning;
    case spdlog::level::info:
        return informational;
    default:
        return debug;
    }
}

} // namespace ZOL::Backends
