#pragma once

#include <cstdint>
#include <ctime>
#include <filesystem>

#include <windows.h>

namespace ZOL::Backends {

/// Nobody else is kept from reading, writing, renaming or deleting an open file.
constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// A handle that is closed with its scope.
class ScopedHandle {
public:
    explicit ScopedHandle(HANDLE handle) : handle_(handle) {}
    ScopedHandle(const ScopedHandle&) = delete;
    ScopedHandle& operator=(const ScopedHandle&) = delete;
    ~ScopedHandle() {
        if (isValid()) {
            CloseHandle(handle_);
        }
    }

    bool isValid() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return handle_; }

private:
    HANDLE handle_;
};

/// The handle that a class keeps as a number, so that its header does not need those of Windows.
inline HANDLE handleOf(std::intptr_t handle) noexcept {
    return reinterpret_cast<HANDLE>(handle); // NOLINT(performance-no-int-to-ptr)
}

std::uint64_t combined(DWORD high, DWORD low) noexcept;

std::time_t toTime(const FILETIME& time) noexcept;

/// Throws LogFileError.
/// @param action for example "write to".
/// @param error of GetLastError.
[[noreturn]] void throwFileError(const char* action, const std::filesystem::path& path,
                                 DWORD error);

/// The handle that CreateFileW has returned, if it is that of a regular file. If not, throws
/// LogFileError, and the handle is closed.
HANDLE requireRegularFile(HANDLE handle, const std::filesystem::path& path);

} // namespace ZOL::Backends
