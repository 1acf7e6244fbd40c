#pragma once

#include <spdlog/common.h>
#include <syslog.h>

namespace ZOL::Backends {

/// What the system's log and its journal call a level.
inline int syslogPriority(spdlog::level::level_enum level) {
    switch (level) {
    case spdlog::level::critical:
        return LOG_CRIT;
    case spdlog::level::err:
        return LOG_ERR;
    case spdlog::level::warn:
        return LOG_WARNING;
    case spdlog::level::info:
        return LOG_INFO;
    default:
        return LOG_DEBUG;
    }
}

} // namespace ZOL::Backends
