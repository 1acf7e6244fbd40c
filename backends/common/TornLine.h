#pragma once

#include <spdlog/common.h>

namespace ZOL::Backends {

/// Handlers for spdlog's file sinks: if an opened file ends without a line end, for example because
/// the disk was full, the line is terminated before anything is appended.
spdlog::file_event_handlers terminateTornLine();

} // namespace ZOL::Backends
