#include "file/LibraryFile.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

#include "Environment.h"
#include "file/CppAbi.h"

namespace backendcheck {

namespace {

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
    library.hasOwnRuntime = hasOwnRuntime(library, content);
    return library;
}

std::vector<std::filesystem::path> searchPath() {
    std::vector<std::filesystem::path> folders;
    const std::string value = variable(searchVariable);
    for (std::size_t begin = 0; !value.empty() && begin <= value.size();) {
        const std::size_t end =
            std::min(value.find_first_of(searchSeparators, begin), value.size());
        const std::string folder = end > begin ? value.substr(begin, end - begin) : emptyElement;
        if (!folder.empty()) {
            folders.push_back(std::filesystem::u8path(folder));
        }
        begin = end + 1;
    }
    return folders;
}

void setSearchPath(const std::vector<std::filesystem::path>& folders) {
    std::string value;
    for (const std::filesystem::path& folder : folders) {
        // The current folder of a child process is another one.
        const std::string element = std::filesystem::absolute(folder).u8string();
        if (element.find_first_of(searchSeparators) != std::string::npos) {
            throw std::runtime_error(std::string(searchVariable) + " cannot contain the folder " +
                                     element + ", because of the \"" + *searchSeparators +
                                     "\" in its name");
        }
        value += (value.empty() ? "" : std::string(1, *searchSeparators)) + element;
    }
    setVariable(searchVariable, value);
}

} // namespace backendcheck
