#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace backendcheck {

struct Missing {
    std::vector<std::string> libraries;
    std::vector<std::string> symbols;
};

/// What the loader would not find for that library. Loads the libraries that it needs, on Windows.
Missing missingFor(const std::filesystem::path& file);

/// Loads it by a bare name, as hosts do, and returns where createBackend is; null if that failed,
/// with the loader's own words.
void* loadedEntryPoint(const std::string& fileName, std::string& error);

/// The library in which that function is.
std::filesystem::path fileWith(void* function);

} // namespace backendcheck
