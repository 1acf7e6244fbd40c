#pragma once

#include <string>
#include <vector>

namespace surface {

// The lines of each golden, as the compiler and the loaded module have them now, in no particular
// order. A line is a name, or a name and a value separated by ": ".

/// The demangled names that the module exports.
std::vector<std::string> currentExports();

/// Size and alignment of each type that crosses the module's boundary.
std::vector<std::string> currentLayouts();

/// The numbers of the logging levels.
std::vector<std::string> currentLevels();

/// The virtual functions of each interface, by slot.
std::vector<std::string> currentSlots();

/// The exceptions that the module throws, with their base classes.
std::vector<std::string> currentExceptions();

/// The file in goldens/ with the exports of the module that the tests load. The first argument of
/// the test program replaces it.
extern std::string exportsFile;

} // namespace surface
