#include "files/Rename.h"

#include <windows.h>

namespace ZOL::Backends {

std::error_code renameWithoutReplacing(const std::filesystem::path& from,
                                       const std::filesystem::path& to) noexcept {
    if (MoveFileExW(from.c_str(), to.c_str(), 0)) {
        return {};
    }
    const DWORD error = GetLastError();
    if (error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS) {
        return std::make_error_code(std::errc::file_exists);
    }
    return {static_cast<int>(error), std::system_category()};
}

} // namespace ZOL::Backends
