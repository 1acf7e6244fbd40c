#include "LogFiles.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <vector>

#include <zlib.h>

namespace fs = std::filesystem;

namespace {

std::string contentOf(const fs::path& file) {
    std::ifstream input(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(input), {});
}

/// Throws if the file is not complete.
std::string uncompressed(const fs::path& file) {
    gzFile input = gzopen(file.string().c_str(), "rb");
    std::string text;
    std::array<char, 65536> block{};
    int count = 0;
    while ((count = gzread(input, block.data(), static_cast<unsigned>(block.size()))) > 0) {
        text.append(block.data(), static_cast<std::size_t>(count));
    }
    if (gzclose(input) != Z_OK || count < 0) {
        throw std::runtime_error(file.string() + " is damaged");
    }
    return text;
}

} // namespace

std::string textOfAllFiles(const fs::path& log) {
    const std::regex rotated(log.stem().string() + R"((_\d{4}-\d\d-\d\d)?\.\d{8}T\d{6}Z\.\d{3})" +
                             log.extension().string() + R"((\.gz)?)");
    std::vector<fs::path> files;
    const fs::path folder = log.has_parent_path() ? log.parent_path() : ".";
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (std::regex_match(entry.path().filename().string(), rotated)) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    std::string text;
    for (const fs::path& file : files) {
        text += file.extension() == ".gz" ? uncompressed(file) : contentOf(file);
    }
    text += contentOf(log);
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    return text;
}
