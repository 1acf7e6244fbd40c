#pragma once

#include <filesystem>
#include <string>

/// The lines of a log and its rotated files, compressed ones too, oldest first.
std::string textOfAllFiles(const std::filesystem::path& log);
