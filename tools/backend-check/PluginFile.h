#pragma once

#include <filesystem>
#include <string>

namespace backendcheck {

/// Where a back end's file is, or why there is none.
struct PluginFile {
    std::filesystem::path file; // empty if there is none
    std::string text;           // what to say of it, for a reader
};

/// @param folder empty: wherever a host would look.
PluginFile findPlugin(const std::string& name, const std::filesystem::path& folder);

} // namespace backendcheck
