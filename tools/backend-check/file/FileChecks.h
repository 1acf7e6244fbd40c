#pragma once

#include <filesystem>
#include <string>

#include "Report.h"

namespace backendcheck {

// The checks that read the plug-in's file without loading it.

/// Check "file-name": finds the file of the back end with this base name.
/// @param folder where to look; empty: in the folders that a host's loader searches.
/// @return the file, or an empty path.
std::filesystem::path findPlugin(const std::string& name, const std::filesystem::path& folder,
                                 Report& report);

/// Checks "file-format" to "runtime". False if loading the file makes no sense.
bool checkFile(const std::filesystem::path& file, Report& report);

} // namespace backendcheck
