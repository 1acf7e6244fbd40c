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
    bool hasOwnCppRuntime = false;
};

/// The loader of this platform would not accept the file; the text says what it is.
class NotALibrary : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class DamagedLibrary : public NotALibrary {
public:
    DamagedLibrary() : NotALibrary("is cut short or damaged: it names places beyond its end") {}
};

/// Throws NotALibrary.
LibraryFile readLibrary(const std::filesystem::path& file);

/// The platform's part of it: the format of its libraries.
LibraryFile parseLibrary(std::string& content);

// Where the platform looks for libraries.

/// The environment variable with the search path, and its separator.
extern const char* const searchVariable;
extern const char searchSeparator;

/// The folders in that variable.
std::vector<std::filesystem::path> searchPath();

/// The folders that a host's loader searches, in its order; without the configured ones
/// (/etc/ld.so.conf) on Linux.
std::vector<std::filesystem::path> searchFolders();

/// The file of the framework module that this program uses.
std::filesystem::path frameworkFile();

/// The running program.
std::filesystem::path programFile();

} // namespace backendcheck
