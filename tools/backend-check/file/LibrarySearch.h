#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace backendcheck {

// The platform's names and rules for finding libraries.

/// ".dll" or ".so".
const char* librarySuffix();

/// The variable with the folders where libraries are looked for, and what stands between them.
const char* searchVariable();
char searchSeparator();

/// The folders where a host's loader looks, in its order; those that an installation adds to them
/// on Linux are left out.
std::vector<std::filesystem::path> searchFolders();

/// The file of the framework module that this program uses.
std::filesystem::path frameworkFile();

/// The running program.
std::filesystem::path programFile();

/// Has processes that are started from now on spoil what they free, where the platform can do that,
/// so that the use of an object after its end shows.
void poisonFreedMemory();

void setVariable(const char* name, const std::string& value);

} // namespace backendcheck
