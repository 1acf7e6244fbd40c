#pragma once

#include <spdlog/fwd.h>

namespace ZOL::Backends {

/// The syslog priority of a level, without a facility. The journal uses the same numbers.
int syslogPriority(spdlog::level::level_enum level);

} // namespace ZOL::Backends
