#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace backendcheck {

/// A library that was loaded, or why it could not be.
struct LoadedLibrary {
    std::filesystem::path file; // where createBackend is; empty if it could not be loaded
    std::vector<std::string> missingLibraries; // Linux: the first one
    std::vector<std::string> missingSymbols;
    std::string error; // any other reason, as the loader reports it
};

/// Loads a plug-in by its bare file name, as hosts do. Exceptions of its static initialisers come
/// out, where the platform lets them.
LoadedLibrary loadPlugin(const std::filesystem::path& file);

} // namespace backendcheck
