#include "TornLine.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

#include <spdlog/details/os.h>

namespace ZOL::Backends {

namespace {

bool endsInTornLine(const spdlog::filename_t& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    file.seekg(-1, std::ios::end); // fails if the file is empty
    const int last = file.get();
    return file.good() && last != '\n';
}

} // namespace

spdlog::file_event_handlers terminateTornLine() {
    spdlog::file_event_handlers handlers;
    handlers.after_open = [](const spdlog::filename_t& path, std::FILE* file) {
        if (endsInTornLine(path)) {
            std::fputs(spdlog::details::os::default_eol, file);
        }
    };
    return handlers;
}

} // namespace ZOL::Backends
