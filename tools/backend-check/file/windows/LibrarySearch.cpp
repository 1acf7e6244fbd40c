#include "file/LibrarySearch.h"

#include <cstdlib>

#include <windows.h>

#include "Text.h"

namespace backendcheck {

namespace {

std::filesystem::path fileOf(HMODULE module) {
    constexpr DWORD maxLength = 32768;
    std::wstring file(maxLength, L'\0');
    file.resize(GetModuleFileNameW(module, file.data(), maxLength));
    return file;
}

} // namespace

const char* librarySuffix() {
    return ".dll";
}

const char* searchVariable() {
    return "PATH";
}

char searchSeparator() {
    return ';';
}

std::vector<std::filesystem::path> searchFolders() {
    std::vector<std::filesystem::path> folders = {programFile().parent_path()};
    std::string folder(MAX_PATH, '\0');
    folder.resize(GetSystemDirectoryA(folder.data(), MAX_PATH));
    folders.emplace_back(folder);
    folder.resize(MAX_PATH);
    folder.resize(GetWindowsDirectoryA(folder.data(), MAX_PATH));
    folders.emplace_back(folder);
    folders.push_back(std::filesystem::current_path());
    for (const std::string& part : split(std::getenv(searchVariable()), searchSeparator())) {
        if (!part.empty()) {
            folders.emplace_back(part);
        }
    }
    return folders;
}

std::filesystem::path frameworkFile() {
    return fileOf(GetModuleHandleA(ZOL_MODULE_NAME ".dll"));
}

std::filesystem::path programFile() {
    return fileOf(nullptr);
}

void poisonFreedMemory() {
    // The heap offers that to debuggers only.
}

void setVariable(const char* name, const std::string& value) {
    _putenv_s(name, value.c_str());
    SetEnvironmentVariableA(name, value.c_str());
}

} // namespace backendcheck
