#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace backendcheck {

// What the system passes to this program and takes from it. All texts of the tool are UTF-8, also
// those of paths: std::filesystem::u8path and u8string convert them.

/// The arguments of main, without the program's name.
std::vector<std::string> programArguments(int count, char** arguments);

/// An environment variable; empty if it is not set.
std::string variable(const char* name);

/// Sets an environment variable of this process, which children inherit.
void setVariable(const char* name, const std::string& value);

/// Opens a file for appending; null if that fails.
std::FILE* openForAppending(const std::filesystem::path& file);

/// A back end's name as the framework passes it to the loader; empty if it cannot.
std::string nameForLoader(const std::string& name);

} // namespace backendcheck
