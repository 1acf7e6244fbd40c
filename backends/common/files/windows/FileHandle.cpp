#include "FileHandle.h"

#include <string>
#include <system_error>

#include "files/LogFile.h"

namespace ZOL::Backends {

std::uint64_t combined(DWORD high, DWORD low) noexcept {
    constexpr unsigned bitsOfLow = 32;
    return static_cast<std::uint64_t>(high) << bitsOfLow | low;
}

std::time_t toTime(const FILETIME& time) noexcept {
    constexpr std::uint64_t ticksPerSecond = 10000000;
    constexpr std::int64_t epoch = 11644473600; // 1970 in seconds since 1601
    return static_cast<std::time_t>(combined(time.dwHighDateTime, time.dwLowDateTime) /
                                    ticksPerSecond) -
           epoch;
}

void throwFileError(const char* action, const std::filesystem::path& path, DWORD error) {
    throw LogFileError("cannot " + std::string(action) + " " + path.u8string() + ": " +
                       std::system_category().message(static_cast<int>(error)));
}

HANDLE requireRegularFile(HANDLE handle, const std::filesystem::path& path) {
    if (handle == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        const DWORD attributes = GetFileAttributesW(path.c_str());
        if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            throw LogFileError(path.u8string() + " is a folder and not a regular file");
        }
        throwFileError("open", path, error);
    }
    if (GetFileType(handle) != FILE_TYPE_DISK) {
        CloseHandle(handle);
        throw LogFileError(path.u8string() + " is a device and not a regular file");
    }
    return handle;
}

} // namespace ZOL::Backends
