#include "WholeLines.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

#include <spdlog/details/os.h>

namespace ZOL::Backends {

namespace {

bool endsWithinALine(const spdlog::filename_t& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    file.seekg(-1, std::ios::end); // fails if there is nothing yet
    const int last = file.get();
    return file.good() && last != '\n';
}

} // namespace

spdlog::file_event_handlers wholeLines() {
    spdlog::file_event_handlers handlers;
    handlers.after_open = [](const spdlog::filename_t& path, std::FILE* file) {
        if (endsWithinALine(path)) {
            std::fputs(spdlog::details::os::default_eol, file);
        }
    };
    return handlers;
}

} // namespace ZOL::Backends
