#pragma once

#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace backendcheck {

struct ExportedName {
    std::string name;
    bool isFunction;
};

/// What the file of a dynamic library contains, read without loading it.
struct LibraryFile {
    std::vector<ExportedName> exports;
    std::vector<std::string> hidden; // defined, but not exported; Linux only
    std::vector<std::string> needed; // libraries, as the loader is asked for them
    std::map<std::string, std::vector<std::string>> imports; // by library; Windows only
    bool hasOwnRuntime = false;                              // a C++ runtime library is linked in
};

/// The loader of this platform would not accept the file; the text says what it is.
class NotALibrary : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class DamagedLibrary : public NotALibrary {
public:
    DamagedLibrary() : NotALibrary("is cut short or damaged: it refers to data beyond its end") {}
};

/// Throws NotALibrary.
LibraryFile readLibrary(const std::filesystem::path& file);

/// The platform's part of it: the format of its libraries.
LibraryFile parseLibrary(std::string& content);

// Where the platform looks for libraries.

/// The environment variable with the search path, the characters that separate its elements, and
/// the folder that an empty element stands for ("" for none).
extern const char* const searchVariable;
extern const char* const searchSeparators;
extern const char* const emptyElement;

/// The folders in that variable.
std::vector<std::filesystem::path> searchPath();

/// Sets the variable to these folders. Throws std::runtime_error if it cannot contain one of them.
void setSearchPath(const std::vector<std::filesystem::path>& folders);

/// The folders that a host's loader searches, in its order; without the configured ones
/// (/etc/ld.so.conf) on Linux.
std::vector<std::filesystem::path> searchFolders();

/// The file of the framework module that this program uses.
std::filesystem::path frameworkFile();

/// The running program.
std::filesystem::path programFile();

/// The file of a loaded module; Windows only.
std::filesystem::path fileOf(void* module);

} // namespace backendcheck
