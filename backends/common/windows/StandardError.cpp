#include "StandardError.h"

#include <algorithm>
#include <stdexcept>
#include <system_error>

#include <windows.h>

#include "Text.h"

namespace ZOL::Backends {

namespace {

constexpr const char* standardError = "standard error";
constexpr const char* fullStandardError = "standard error takes no more messages";

constexpr WORD whiteText = FOREGROUND_RED | FOREGROUND_GREEN | FOREGROUND_BLUE;
constexpr WORD textColourMask = whiteText | FOREGROUND_INTENSITY;

/// Older versions of Windows refuse larger pieces.
constexpr std::size_t maxConsoleUnits = 8192;

[[noreturn]] void throwLastError() {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(),
                            standardError);
}

/// The host may attach a console or redirect standard error at any time. Null if there is none.
HANDLE standardErrorHandle() {
    auto* const handle = GetStdHandle(STD_ERROR_HANDLE);
    return handle == INVALID_HANDLE_VALUE ? nullptr : handle;
}

bool isConsole(HANDLE handle) {
    DWORD mode = 0;
    return GetConsoleMode(handle, &mode) != FALSE;
}

void writeBytes(HANDLE handle, std::string_view text) {
    while (!text.empty()) {
        DWORD written = 0;
        if (WriteFile(handle, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) ==
            FALSE) {
            throwLastError();
        }
        if (written == 0) { // a full pipe that does not block
            throw std::runtime_error(fullStandardError);
        }
        text.remove_prefix(written);
    }
}

void writeToConsole(HANDLE console, std::string_view text) {
    const std::wstring wide = utf16(text);
    for (std::size_t begin = 0; begin < wide.size();) {
        std::size_t size = std::min(maxConsoleUnits, wide.size() - begin);
        if (begin + size < wide.size() && IS_HIGH_SURROGATE(wide[begin + size - 1])) {
            --size; // a console shows no character for half a pair
        }
        DWORD written = 0;
        if (WriteConsoleW(console, wide.data() + begin, static_cast<DWORD>(size), &written,
                          nullptr) == FALSE) {
            throwLastError();
        }
        begin += size;
    }
}

WORD attributes(spdlog::level::level_enum level) {
    switch (level) {
    case spdlog::level::debug:
        return FOREGROUND_GREEN | FOREGROUND_BLUE; // cyan
    case spdlog::level::info:
        return FOREGROUND_GREEN;
    case spdlog::level::warn:
        return FOREGROUND_RED | FOREGROUND_GREEN | FOREGROUND_INTENSITY; // yellow
    case spdlog::level::err:
        return FOREGROUND_RED | FOREGROUND_INTENSITY;
    case spdlog::level::critical:
        return BACKGROUND_RED | whiteText | FOREGROUND_INTENSITY;
    default:
        return whiteText;
    }
}

} // namespace

void writeToStandardError(std::string_view text) {
    auto* const handle = standardErrorHandle();
    if (handle == nullptr) {
        return;
    }
    if (isConsole(handle)) {
        writeToConsole(handle, text);
    } else {
        writeBytes(handle, text);
    }
}

void writeToStandardError(const ColouredText& text) {
    auto* const handle = standardErrorHandle();
    CONSOLE_SCREEN_BUFFER_INFO before{};
    if (handle == nullptr || !isConsole(handle)) {
        writeToStandardError(withEscapeCodes(text));
        return;
    }
    if (GetConsoleScreenBufferInfo(handle, &before) == FALSE) {
        before.wAttributes = whiteText;
    }
    writeToConsole(handle, text.text.substr(0, text.begin));
    const auto background = static_cast<WORD>(before.wAttributes & ~textColourMask);
    SetConsoleTextAttribute(handle, attributes(text.level) | background);
    try {
        writeToConsole(handle, text.text.substr(text.begin, text.end - text.begin));
    } catch (...) {
        SetConsoleTextAttribute(handle, before.wAttributes);
        throw;
    }
    SetConsoleTextAttribute(handle, before.wAttributes);
    writeToConsole(handle, text.text.substr(text.end));
}

bool standardErrorHasColours() {
    auto* const handle = standardErrorHandle();
    return handle != nullptr && isConsole(handle);
}

} // namespace ZOL::Backends
