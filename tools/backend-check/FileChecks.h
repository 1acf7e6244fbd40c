#pragma once

#include <filesystem>

#include "Report.h"

namespace backendcheck {

/// What can be told of the plug-in's file without loading it. False if it cannot be loaded anyway.
bool checkFile(const std::filesystem::path& file, Report& report);

} // namespace backendcheck
