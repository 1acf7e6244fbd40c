#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace backendcheck {

// How the platform finds libraries.

/// ".dll" or ".so".
const char* librarySuffix();

/// The environment variable with the search path, and its separator.
const char* searchVariable();
char searchSeparator();

/// The folders that a host's loader searches, in its order; without the configured ones
/// (/etc/ld.so.conf) on Linux.
std::vector<std::filesystem::path> searchFolders();

/// The file of the framework module that this program uses.
std::filesystem::path frameworkFile();

/// The running program.
std::filesystem::path programFile();

/// Has child processes overwrite freed memory, so that the use of a destroyed object crashes. Does
/// nothing on Windows.
void poisonFreedMemory();

void setVariable(const char* name, const std::string& value);

} // namespace backendcheck
