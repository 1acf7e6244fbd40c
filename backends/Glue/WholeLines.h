#pragma once

#include <spdlog/common.h>

namespace ZOL::Backends {

/// For the sinks that write files: ends a line that was cut short, by a full disk say, before
/// anything is appended to it.
spdlog::file_event_handlers wholeLines();

} // namespace ZOL::Backends
