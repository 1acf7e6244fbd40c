#include "file/LibraryFile.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string_view>

namespace backendcheck {

namespace {

using namespace std::string_view_literals;

// The name of a type that each copy of the C++ runtime defines. With its terminators: a mere
// reference to the symbol is not a copy.
constexpr std::string_view runtimeTypeName = "\0N10__cxxabiv117__class_type_infoE\0"sv;

bool isText(std::string_view content) {
    return std::all_of(content.begin(), content.end(), [](char c) {
        return static_cast<unsigned char>(c) >= ' ' || c == '\t' || c == '\n' || c == '\r';
    });
}

} // namespace

LibraryFile readLibrary(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios_base::binary);
    if (!stream) {
        throw NotALibrary("cannot be opened for reading");
    }
    std::string content{std::istreambuf_iterator<char>(stream), {}};
    if (content.empty()) {
        throw NotALibrary("is empty");
    }
    constexpr std::size_t inspected = 256;
    if (isText(content.substr(0, inspected))) {
        throw NotALibrary(content.rfind("!<arch>", 0) == 0
                              ? "is a static library, which no host can load"
                              : "is a text file");
    }
    LibraryFile library = parseLibrary(content);
    library.hasOwnCppRuntime = content.find(runtimeTypeName) != std::string::npos;
    return library;
}

std::vector<std::filesystem::path> searchPath() {
    std::vector<std::filesystem::path> folders;
    const char* const value = std::getenv(searchVariable);
    std::istringstream parts(value != nullptr ? value : "");
    for (std::string part; std::getline(parts, part, searchSeparator);) {
        folders.emplace_back(part.empty() ? "." : part);
    }
    return folders;
}

} // namespace backendcheck
