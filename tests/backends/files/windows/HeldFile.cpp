#include "../HeldFile.h"

#include <system_error>
#include <utility>

#include <gtest/gtest.h>
#include <windows.h>

HeldFile::HeldFile(std::filesystem::path path)
    : path_(std::move(path)),
      handle_(reinterpret_cast<std::intptr_t>(
          CreateFileW(path_.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr))) {
    EXPECT_NE(handle_, -1) << "cannot open " << path_;
}

HeldFile::~HeldFile() {
    CloseHandle(reinterpret_cast<HANDLE>(handle_)); // NOLINT(performance-no-int-to-ptr)
}

void HeldFile::prepare() {}

std::string HeldFile::refusal() {
    return std::system_category().message(ERROR_SHARING_VIOLATION);
}
