#pragma once

#include <filesystem>
#include <string>

#include "Options.h"
#include "Report.h"

namespace backendcheck {

/// Check "file-name": finds the file of the back end with this base name (file/FileName.cpp).
/// @param folder where to look; empty: in the folders that a host's loader searches.
/// @return the file, or an empty path.
std::filesystem::path findPlugin(const std::string& name, const std::filesystem::path& folder,
                                 Report& report);

/// Checks "file-format" to "runtime", which read the file without loading it
/// (file/FileContent.cpp). False if loading it makes no sense.
bool checkFile(const std::filesystem::path& file, Report& report);

/// Checks "libraries" to "exit", in child processes: one if there is no crash, and another one
/// after each crash, for the remaining checks (live/Supervisor.cpp).
void checkLive(const Options& options, const std::filesystem::path& file, Report& report);

/// What the child process does: runs all steps and writes the findings to the record
/// (steps/Steps.cpp).
int tryPlugin(const Options& options);

} // namespace backendcheck
