#include "file/LibraryFile.h"

#include <fstream>
#include <iterator>
#include <string_view>

namespace backendcheck {

namespace {

using namespace std::string_view_literals;

// The name of a type that each copy of the C++ runtime defines; its zero tells it from the mention
// of a symbol.
constexpr std::string_view runtimeTypeName = "\0N10__cxxabiv117__class_type_infoE\0"sv;

bool isText(std::string_view begin) {
    for (const char c : begin) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < ' ' && byte != '\t' && byte != '\n' && byte != '\r') {
            return false;
        }
    }
    return true;
}

} // namespace

LibraryFile readLibrary(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios_base::binary);
    if (!stream) {
        throw NotALibrary("cannot be opened for reading");
    }
    std::string content{std::istreambuf_iterator<char>(stream), {}};
    constexpr std::size_t lookedAt = 256;
    if (content.empty()) {
        throw NotALibrary("is empty");
    }
    if (isText(content.substr(0, lookedAt))) {
        constexpr std::string_view archive = "!<arch>";
        throw NotALibrary(content.compare(0, archive.size(), archive) == 0
                              ? "is a static library, which no host can load"
                              : "is a text file");
    }
    const Bytes bytes(std::move(content));
    try {
        LibraryFile library = parseLibrary(bytes);
        library.hasOwnCppRuntime = bytes.has(runtimeTypeName);
        return library;
    } catch (const CutShort&) {
        throw NotALibrary("is cut short or damaged: it names places beyond its end");
    }
}

} // namespace backendcheck
