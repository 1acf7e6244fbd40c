#include "files/FileLock.h"

#include <string>
#include <system_error>

#include <windows.h>

#include "files/LogFile.h"

namespace ZOL::Backends {

std::unique_ptr<FileLock> FileLock::tryLock(const std::filesystem::path& log) {
    std::filesystem::path path = log;
    path += ".lock";
    HANDLE handle = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        if (error == ERROR_SHARING_VIOLATION) {
            return nullptr;
        }
        throw LogFileError("cannot open " + path.u8string() + ": " +
                           std::system_category().message(static_cast<int>(error)));
    }
    try {
        return std::unique_ptr<FileLock>(new FileLock(reinterpret_cast<std::intptr_t>(handle)));
    } catch (...) {
        CloseHandle(handle);
        throw;
    }
}

FileLock::FileLock(std::intptr_t handle) noexcept : handle_(handle) {}

FileLock::~FileLock() {
    CloseHandle(reinterpret_cast<HANDLE>(handle_)); // NOLINT(performance-no-int-to-ptr)
}

bool FileLock::isHeld() const noexcept {
    return true;
}

} // namespace ZOL::Backends
