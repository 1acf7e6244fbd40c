#pragma once

#include <filesystem>

#include "Options.h"
#include "Report.h"

namespace backendcheck {

/// Has the plug-in tried in processes of its own: in one if all goes well, and in another one after
/// each crash, for what is left.
void checkLive(const Options& options, const std::filesystem::path& file, Report& report);

} // namespace backendcheck
