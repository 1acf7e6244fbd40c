#include "files/FileStreams.h"

#include <algorithm>
#include <utility>

#include <windows.h>

#include "FileHandle.h"

namespace ZOL::Backends {

namespace {

constexpr std::intptr_t noHandle = -1;
/// Of one call.
constexpr std::size_t maxBytes = 0x40000000;

HANDLE openForReading(const std::filesystem::path& path) {
    return requireRegularFile(CreateFileW(path.c_str(), GENERIC_READ, shareAll, nullptr,
                                          OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr),
                              path);
}

HANDLE create(const std::filesystem::path& path) {
    HANDLE handle = CreateFileW(path.c_str(), GENERIC_WRITE, shareAll, nullptr, CREATE_NEW,
                                FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        throwFileError("create", path, GetLastError());
    }
    return handle;
}

FILETIME lastWriteOf(std::intptr_t handle, const std::filesystem::path& path) {
    FILETIME time = {};
    if (!GetFileTime(handleOf(handle), nullptr, nullptr, &time)) {
        throwFileError("read", path, GetLastError());
    }
    return time;
}

} // namespace

InputFile::InputFile(std::filesystem::path path)
    : path_(std::move(path)), handle_(reinterpret_cast<std::intptr_t>(openForReading(path_))) {}

InputFile::~InputFile() {
    CloseHandle(handleOf(handle_));
}

std::size_t InputFile::readAt(std::uint64_t offset, unsigned char* bytes, std::size_t size) const {
    constexpr unsigned bitsOfLow = 32;
    OVERLAPPED position = {};
    position.Offset = static_cast<DWORD>(offset);
    position.OffsetHigh = static_cast<DWORD>(offset >> bitsOfLow);
    DWORD count = 0;
    if (!ReadFile(handleOf(handle_), bytes, static_cast<DWORD>(std::min(size, maxBytes)), &count,
                  &position) &&
        GetLastError() != ERROR_HANDLE_EOF) {
        throwFileError("read", path_, GetLastError());
    }
    return count;
}

std::uint64_t InputFile::size() const {
    LARGE_INTEGER size = {};
    if (!GetFileSizeEx(handleOf(handle_), &size)) {
        throwFileError("read", path_, GetLastError());
    }
    return static_cast<std::uint64_t>(size.QuadPart);
}

std::time_t InputFile::lastWrite() const {
    return toTime(lastWriteOf(handle_, path_));
}

OutputFile::OutputFile(std::filesystem::path path, const InputFile& source)
    : path_(std::move(path)),
      source_(source),
      handle_(reinterpret_cast<std::intptr_t>(create(path_))) {}

OutputFile::~OutputFile() {
    if (handle_ != noHandle) {
        CloseHandle(handleOf(handle_));
    }
    if (!isComplete_) {
        DeleteFileW(path_.c_str());
    }
}

void OutputFile::write(const unsigned char* bytes, std::size_t size) {
    while (size > 0) {
        DWORD count = 0;
        if (!WriteFile(handleOf(handle_), bytes, static_cast<DWORD>(std::min(size, maxBytes)),
                       &count, nullptr)) {
            throwFileError("write to", path_, GetLastError());
        }
        if (count == 0) {
            throwFileError("write to", path_, ERROR_DISK_FULL);
        }
        bytes += count;
        size -= count;
    }
}

void OutputFile::complete() {
    const FILETIME time = lastWriteOf(source_.handle_, source_.path_);
    if (!SetFileTime(handleOf(handle_), nullptr, nullptr, &time)) {
        throwFileError("set the time of", path_, GetLastError());
    }
    if (!FlushFileBuffers(handleOf(handle_))) {
        throwFileError("write to", path_, GetLastError());
    }
    CloseHandle(handleOf(std::exchange(handle_, noHandle)));
    isComplete_ = true;
}

} // namespace ZOL::Backends
