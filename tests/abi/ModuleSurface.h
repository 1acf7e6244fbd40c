#pragma once

#include <string>
#include <vector>

namespace boundary {

/// What a module's file offers to the loader.
struct ModuleSurface {
    /// By which those who link the module ask for it at run time.
    std::string name;

    /// Every exported name as it stands in the file, mangled if it is, in no particular order.
    std::vector<std::string> exports;
};

/// Loads the module of that file, extension aside, if it is not loaded yet.
ModuleSurface surfaceOf(const std::string& moduleName);

/// The name as its author would write it. Of a constructor's or destructor's several bodies it
/// tells which one this is.
std::string readable(const std::string& mangled);

} // namespace boundary
