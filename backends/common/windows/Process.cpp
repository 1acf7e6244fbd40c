#include "Process.h"

#include <filesystem>

#include <windows.h>

#include "Text.h"

namespace ZOL::Backends {

std::string programName() {
    constexpr std::size_t longestPath = 32768;
    std::wstring path(longestPath, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return escapedWord(utf8(std::filesystem::path(path).stem().native()));
}

unsigned long processId() {
    return GetCurrentProcessId();
}

std::string hostName() {
    wchar_t name[256] = L"";
    DWORD size = static_cast<DWORD>(std::size(name));
    if (!GetComputerNameExW(ComputerNameDnsHostname, name, &size)) {
        size = 0;
    }
    return escapedWord(utf8({name, size}));
}

} // namespace ZOL::Backends
