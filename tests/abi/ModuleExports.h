#pragma once

#include <string>
#include <vector>

namespace surface {

/// The framework module's file name without extension.
constexpr const char* moduleName = "ZOL_Framework_r.2.0.8.129";

/// The export table of a module's file.
struct ModuleExports {
    /// The name by which those who link the module load it.
    std::string module;

    /// Every exported name as the file has it, mangled or not, in no particular order.
    std::vector<std::string> names;
};

/// Loads the module of that file name without extension, if it is not loaded yet.
ModuleExports exportsOf(const std::string& module);

/// The demangled names that the framework module exports.
std::vector<std::string> readableExports();

/// The demangled name. For a constructor or destructor it says which of its bodies this is.
std::string readable(const std::string& mangled);

} // namespace surface
