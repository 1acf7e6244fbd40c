#include <stdexcept>
#include <string>

#include <windows.h>

#include "../LineFile.h"

namespace benchmarks {

namespace {

HANDLE handleOf(std::intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

} // namespace

const std::string_view AppendedFile::lineEnd = "\r\n";

AppendedFile::AppendedFile(const char* path)
    : handle_(reinterpret_cast<std::intptr_t>(
          CreateFileA(path, FILE_APPEND_DATA | SYNCHRONIZE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                      nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr))) {
    if (handleOf(handle_) == INVALID_HANDLE_VALUE) {
        throw std::runtime_error(std::string("cannot open ") + path);
    }
}

AppendedFile::~AppendedFile() {
    CloseHandle(handleOf(handle_));
}

void AppendedFile::append(std::string_view bytes) {
    DWORD count = 0;
    if (!WriteFile(handleOf(handle_), bytes.data(), static_cast<DWORD>(bytes.size()), &count,
                   nullptr) ||
        count != bytes.size()) {
        throw std::runtime_error("cannot write a line");
    }
}

} // namespace benchmarks
