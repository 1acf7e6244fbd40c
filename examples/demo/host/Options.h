#pragma once

namespace Demo {

struct Options {
    const char* file;
    const char* backend;
    const char* alertLevel;  ///< what counts as an alert; the modules look whether it is a level
    const char* registryKey; ///< whose tree to export, such as HKCU\Environment; null for our own
};

/// Throws std::runtime_error with a line on how to call the program.
Options parseOptions(int argumentCount, const char* const* arguments);

} // namespace Demo
