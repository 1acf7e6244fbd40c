#include "files/Rename.h"

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace ZOL::Backends {

std::error_code renameWithoutReplacing(const std::filesystem::path& from,
                                       const std::filesystem::path& to) noexcept {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return {};
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return {errno, std::generic_category()};
    }
    // Some network file systems cannot do that in one step.
    if (faccessat(AT_FDCWD, to.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0) {
        return std::make_error_code(std::errc::file_exists);
    }
    return rename(from.c_str(), to.c_str()) == 0 ? std::error_code()
                                                 : std::error_code(errno, std::generic_category());
}

bool canBeRemoved(const std::filesystem::path&) noexcept {
    return true; // whoever has it open keeps it
}

} // namespace ZOL::Backends
