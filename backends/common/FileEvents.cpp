#include "FileEvents.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

#include <spdlog/details/os.h>

#include "StandardStreams.h"

namespace ZOL::Backends {

namespace {

bool endsInTornLine(const spdlog::filename_t& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    file.seekg(-1, std::ios::end); // fails if the file is empty
    const int last = file.get();
    return file.good() && last != '\n';
}

} // namespace

spdlog::file_event_handlers FileEvents::handlers() const {
    spdlog::file_event_handlers handlers;
    handlers.after_open = [mayBePipe = mayBePipe_](const spdlog::filename_t& path,
                                                   std::FILE* file) {
        keepApartFromStandardStreams(file);
        *mayBePipe = signalsOf(file).pipe;
        if (endsInTornLine(path)) {
            std::fputs(spdlog::details::os::default_eol, file);
        }
    };
    return handlers;
}

} // namespace ZOL::Backends
