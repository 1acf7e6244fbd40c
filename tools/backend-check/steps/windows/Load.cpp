#include <map>
#include <set>

#include <windows.h>

#include "file/LibraryFile.h"
#include "steps/Steps.h"

namespace backendcheck {

namespace {

std::filesystem::path findLibrary(const std::string& name) {
    for (const std::filesystem::path& folder : searchFolders()) {
        std::error_code error;
        if (std::filesystem::is_regular_file(folder / name, error)) {
            return folder / name;
        }
    }
    return {};
}

/// The loader does not name what is missing, and Wine's does not even fail for a missing symbol.
/// Loads the libraries that the file needs.
void findMissing(const std::filesystem::path& file, std::set<std::string>& seen,
                 LoadedLibrary& library) {
    LibraryFile content;
    try {
        content = readLibrary(file);
    } catch (const NotALibrary& fault) {
        library.missingLibraries.push_back(file.filename().u8string() + ", which " + fault.what());
        return;
    }
    for (const auto& [name, symbols] : content.imports) {
        if (!seen.insert(name).second) {
            continue;
        }
        HMODULE const module = LoadLibraryA(name.c_str());
        if (module == nullptr) {
            const std::filesystem::path needed = findLibrary(name);
            if (needed.empty()) {
                library.missingLibraries.push_back(name);
            } else {
                findMissing(needed, seen, library);
            }
            continue;
        }
        for (const std::string& symbol : symbols) {
            if (GetProcAddress(module, symbol.c_str()) == nullptr) {
                library.missingSymbols.push_back(std::string(symbol).append(" of ").append(name));
            }
        }
    }
}

const char* describe(DWORD code) {
    static const std::map<DWORD, const char*> texts = {
        {ERROR_MOD_NOT_FOUND, "it, or a library that it needs, is not found"},
        {ERROR_PROC_NOT_FOUND, "a function that it needs is not there"},
        {ERROR_DLL_INIT_FAILED, "its initialisation failed"},
        {ERROR_NOACCESS, "its initialisation crashed"},
        {ERROR_BAD_EXE_FORMAT, "it is no library for this platform"}};
    const auto text = texts.find(code);
    return text != texts.end() ? text->second : "the loader refuses it";
}

} // namespace

LoadedLibrary loadPlugin(const std::filesystem::path& file) {
    LoadedLibrary library;
    std::set<std::string> seen;
    findMissing(file, seen, library);
    if (!library.missingLibraries.empty() || !library.missingSymbols.empty()) {
        return library;
    }
    HMODULE const module = LoadLibraryW(file.filename().c_str());
    if (module == nullptr || GetProcAddress(module, "createBackend") == nullptr) {
        const DWORD code = GetLastError();
        library.error = std::string(describe(code)) + " (error " + std::to_string(code) + ")";
        return library;
    }
    library.file = fileOf(module);
    return library;
}

} // namespace backendcheck
