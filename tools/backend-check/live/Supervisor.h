#pragma once

#include <filesystem>

#include "Options.h"
#include "Report.h"

namespace backendcheck {

/// Checks "libraries" to "exit", in child processes: one if all goes well, and another one after
/// each crash, for the checks that are left.
void checkLive(const Options& options, const std::filesystem::path& file, Report& report);

} // namespace backendcheck
