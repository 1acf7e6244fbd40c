#pragma once

#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "file/Bytes.h"

namespace backendcheck {

struct ExportedName {
    std::string name;
    bool isFunction;
};

/// What the file of a dynamic library says of itself, read without loading it.
struct LibraryFile {
    std::vector<ExportedName> exports;
    std::vector<std::string> hidden; // defined, but not exported; empty if the file does not tell
    std::vector<std::string> needed; // libraries, as it names them to the loader
    std::map<std::string, std::vector<std::string>>
        imports; // of which library; Windows alone tells
    bool hasOwnCppRuntime = false;
};

/// The file is no library that this platform's loader would take; the text says what it is.
class NotALibrary : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Throws NotALibrary.
LibraryFile readLibrary(const std::filesystem::path& file);

/// The platform's part of it: the format of its libraries. Throws NotALibrary or CutShort.
LibraryFile parseLibrary(const Bytes& bytes);

} // namespace backendcheck
