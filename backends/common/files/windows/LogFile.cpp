#include "files/LogFile.h"

#include <algorithm>
#include <utility>

#include <windows.h>

#include "FileHandle.h"
#include "ReopeningSink.h"

namespace ZOL::Backends {

namespace {

/// Without the right to delete: a viewer that does not share deletion would be refused, and this
/// program by such a viewer.
HANDLE openHandle(const std::filesystem::path& path) {
    return requireRegularFile(
        CreateFileW(path.c_str(), FILE_APPEND_DATA | FILE_READ_ATTRIBUTES | SYNCHRONIZE, shareAll,
                    nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr),
        path);
}

/// Whether a file ends within a line. Unknown, and taken for no, if it cannot be read.
bool endsWithinLine(const std::filesystem::path& path) {
    const ScopedHandle file(CreateFileW(path.c_str(), GENERIC_READ, shareAll, nullptr,
                                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER back = {};
    back.QuadPart = -1;
    char last = '\n';
    DWORD count = 0;
    return file.isValid() && SetFilePointerEx(file.get(), back, nullptr, FILE_END) &&
           ReadFile(file.get(), &last, 1, &count, nullptr) && count == 1 && last != '\n';
}

} // namespace

LogFile::LogFile(std::filesystem::path path, std::optional<unsigned>)
    : path_(std::move(path)),
      handle_(reinterpret_cast<std::intptr_t>(openHandle(path_))),
      isTorn_(endsWithinLine(path_)) {
    BY_HANDLE_FILE_INFORMATION information = {};
    if (GetFileInformationByHandle(handleOf(handle_), &information)) {
        identity_ = {information.dwVolumeSerialNumber,
                     combined(information.nFileIndexHigh, information.nFileIndexLow)};
        size_ = combined(information.nFileSizeHigh, information.nFileSizeLow);
    }
}

LogFile::~LogFile() {
    CloseHandle(handleOf(handle_));
}

bool LogFile::isOpen() const noexcept {
    BY_HANDLE_FILE_INFORMATION information = {};
    return GetFileInformationByHandle(handleOf(handle_), &information) &&
           identity_ == Identity{information.dwVolumeSerialNumber,
                                 combined(information.nFileIndexHigh, information.nFileIndexLow)};
}

void LogFile::appendFrom(std::string_view& lines) {
    endTornLine();
    write(lines);
}

void LogFile::endTornLine() {
    if (isTorn_) {
        std::string_view lineEnd = platformLineEnd;
        write(lineEnd);
    }
}

void LogFile::write(std::string_view& bytes) {
    constexpr std::size_t maxWrite = 0x40000000;
    while (!bytes.empty()) {
        DWORD count = 0;
        const auto size = static_cast<DWORD>(std::min(bytes.size(), maxWrite));
        if (!WriteFile(handleOf(handle_), bytes.data(), size, &count, nullptr)) {
            throwFileError("write to", path_, GetLastError());
        }
        if (count == 0) {
            throwFileError("write to", path_, ERROR_DISK_FULL);
        }
        size_ += count;
        isTorn_ = bytes[count - 1] != '\n';
        bytes.remove_prefix(count);
    }
}

std::uint64_t LogFile::currentSize() const noexcept {
    LARGE_INTEGER size = {};
    return GetFileSizeEx(handleOf(handle_), &size) ? static_cast<std::uint64_t>(size.QuadPart)
                                                   : size_;
}

void LogFile::refreshSize() noexcept {
    LARGE_INTEGER size = {};
    if (GetFileSizeEx(handleOf(handle_), &size)) {
        const auto newSize = static_cast<std::uint64_t>(size.QuadPart);
        if (newSize < size_) { // truncated by somebody else, perhaps within a line
            isTorn_ = endsWithinLine(path_);
        }
        size_ = newSize;
    }
}

bool LogFile::isAtItsPath() const noexcept {
    FILE_STANDARD_INFO standard = {};
    if (!GetFileInformationByHandleEx(handleOf(handle_), FileStandardInfo, &standard,
                                      sizeof(standard)) ||
        standard.DeletePending) {
        return false;
    }
    const ScopedHandle file(CreateFileW(path_.c_str(), FILE_READ_ATTRIBUTES, shareAll, nullptr,
                                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    BY_HANDLE_FILE_INFORMATION information = {};
    return file.isValid() && GetFileInformationByHandle(file.get(), &information) &&
           identity_ == Identity{information.dwVolumeSerialNumber,
                                 combined(information.nFileIndexHigh, information.nFileIndexLow)};
}

bool LogFile::isDeletionHidden() noexcept {
    static const bool isWine =
        GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
    return isWine;
}

std::chrono::system_clock::time_point LogFile::lastWrite() const noexcept {
    FILETIME time = {};
    if (!GetFileTime(handleOf(handle_), nullptr, nullptr, &time)) {
        return std::chrono::system_clock::now();
    }
    return std::chrono::system_clock::from_time_t(toTime(time));
}

} // namespace ZOL::Backends
