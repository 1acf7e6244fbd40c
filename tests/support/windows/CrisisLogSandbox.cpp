#include "CrisisLogSandbox.h"

#include <filesystem>
#include <stdexcept>

#include <windows.h>

namespace support {

namespace {

constexpr const char* aside = "C:\\zol.log.before-the-test";

// Everybody who sees this drive C sees this name.
constexpr const char* turnName = "Global\\ZOL crisis log test";

HANDLE turn = nullptr;

std::filesystem::path scratchFolder() {
    return std::filesystem::temp_directory_path() / "zol_crisis_log_test";
}

} // namespace

const char* const CrisisLogSandbox::path = "C:\\zol.log";
const char* const CrisisLogSandbox::lineEnd = "\r\n";

CrisisLogSandbox::CrisisLogSandbox() {
    turn = CreateMutexA(nullptr, FALSE, turnName);
    if (turn == nullptr || WaitForSingleObject(turn, INFINITE) == WAIT_FAILED) {
        throw std::runtime_error("cannot keep other tests from the crisis log");
    }
    if (std::filesystem::exists(aside)) {
        std::filesystem::remove_all(path); // an earlier test was ended half-way
    } else if (std::filesystem::exists(path)) {
        std::filesystem::rename(path, aside);
    }
    std::filesystem::remove_all(scratchFolder());
}

CrisisLogSandbox::~CrisisLogSandbox() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
    std::filesystem::rename(aside, path, ignored);
    std::filesystem::remove_all(scratchFolder(), ignored);
    ReleaseMutex(turn);
    CloseHandle(turn);
}

std::string CrisisLogSandbox::scratch() {
    std::filesystem::create_directory(scratchFolder());
    return scratchFolder().string();
}

bool CrisisLogSandbox::isFree() {
    auto* const file =
        CreateFileA(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return GetLastError() == ERROR_FILE_NOT_FOUND;
    }
    CloseHandle(file);
    return true;
}

} // namespace support
