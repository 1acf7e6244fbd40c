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

bool canBeRemoved(const std::filesystem::path& path) noexcept {
    HANDLE handle =
        CreateFileW(path.c_str(), DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        return false;
    }
    CloseHandle(handle);
    return true;
}

} // namespace ZOL::Backends
