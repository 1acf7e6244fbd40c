#include "Environment.h"

#include <memory>

#include <windows.h>

#include <share.h>
#include <shellapi.h>

namespace backendcheck {

namespace {

std::wstring wideOf(const std::string& text) {
    return std::filesystem::u8path(text).wstring();
}

std::string utf8Of(const wchar_t* text) {
    return std::filesystem::path(text).u8string();
}

} // namespace

std::vector<std::string> programArguments(int, char**) {
    // Those of main are in the system's code page.
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&LocalFree)> wide(
        CommandLineToArgvW(GetCommandLineW(), &count), &LocalFree);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) {
        arguments.push_back(utf8Of(wide.get()[i]));
    }
    return arguments;
}

std::string variable(const char* name) {
    constexpr DWORD maxLength = 32768; // of the system
    std::wstring value(maxLength, L'\0');
    value.resize(GetEnvironmentVariableW(wideOf(name).c_str(), value.data(), maxLength));
    return utf8Of(value.c_str());
}

void setVariable(const char* name, const std::string& value) {
    SetEnvironmentVariableW(wideOf(name).c_str(), wideOf(value).c_str());
}

std::FILE* openForAppending(const std::filesystem::path& file) {
    return _wfsopen(file.c_str(), L"ab", _SH_DENYNO);
}

std::string nameForLoader(const std::string& name) {
    // The framework passes names in the system's code page.
    const std::wstring wide = wideOf(name);
    const auto size = static_cast<int>(wide.size());
    BOOL isReplaced = FALSE;
    std::string result(wide.size() * 2, '\0');
    result.resize(static_cast<std::size_t>(WideCharToMultiByte(
        CP_ACP, WC_NO_BEST_FIT_CHARS, wide.data(), size, result.data(),
        static_cast<int>(result.size()), nullptr, GetACP() == CP_UTF8 ? nullptr : &isReplaced)));
    return isReplaced ? std::string() : result;
}

} // namespace backendcheck
