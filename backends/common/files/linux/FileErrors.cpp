#include "FileErrors.h"

#include <string>
#include <system_error>

#include "files/LogFile.h"

namespace ZOL::Backends {

const char* otherKind(mode_t mode) noexcept {
    switch (mode & S_IFMT) {
    case S_IFREG:
        return nullptr;
    case S_IFDIR:
        return "a folder";
    case S_IFIFO:
        return "a FIFO";
    case S_IFLNK:
        return "a symbolic link";
    case S_IFSOCK:
        return "a socket";
    default:
        return "a device";
    }
}

void throwOtherKind(const std::filesystem::path& path, const char* kind) {
    throw LogFileError(path.string() + " is " + kind + " and not a regular file");
}

void throwFileError(const char* action, const std::filesystem::path& path, int error) {
    throw LogFileError("cannot " + std::string(action) + " " + path.string() + ": " +
                       std::generic_category().message(error));
}

void throwOpenError(const std::filesystem::path& path, int error) {
    struct stat status = {};
    if (lstat(path.c_str(), &status) == 0) {
        if (const char* const kind = otherKind(status.st_mode)) {
            throwOtherKind(path, kind);
        }
    }
    throwFileError("open", path, error);
}

} // namespace ZOL::Backends
