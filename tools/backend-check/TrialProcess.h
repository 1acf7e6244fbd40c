#pragma once

#include "Options.h"

namespace backendcheck {

/// What the process is doing until it calls the host's own handlers for its end.
inline constexpr const char* endOfProcess =
    "the end of the process: its static destructors and atexit handlers";

/// What the process does that loads the plug-in: tries it, step by step, and writes all that it
/// finds to the journal.
int tryPlugin(const Options& options);

} // namespace backendcheck
