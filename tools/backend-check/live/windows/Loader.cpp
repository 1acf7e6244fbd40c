#include "live/Loader.h"

#include <set>

#include <windows.h>

#include "file/LibraryFile.h"
#include "file/LibrarySearch.h"

namespace backendcheck {

namespace {

std::filesystem::path found(const std::string& library) {
    for (const std::filesystem::path& folder : searchFolders()) {
        std::error_code error;
        if (std::filesystem::is_regular_file(folder / library, error)) {
            return folder / library;
        }
    }
    return {};
}

void look(const std::filesystem::path& file, std::set<std::string>& seen, Missing& missing) {
    LibraryFile library;
    try {
        library = readLibrary(file);
    } catch (const NotALibrary& refusal) {
        missing.libraries.push_back(file.filename().string() + ", which " + refusal.what());
        return;
    }
    for (const auto& [name, symbols] : library.imports) {
        if (!seen.insert(name).second) {
            continue;
        }
        HMODULE const module = LoadLibraryA(name.c_str());
        if (module == nullptr) {
            const std::filesystem::path place = found(name);
            if (place.empty()) {
                missing.libraries.push_back(name);
            } else {
                look(place, seen, missing);
            }
            continue;
        }
        for (const std::string& symbol : symbols) {
            if (GetProcAddress(module, symbol.c_str()) == nullptr) {
                missing.symbols.push_back(symbol + " of " + name);
            }
        }
    }
}

std::string wordsFor(DWORD code) {
    switch (code) {
    case ERROR_MOD_NOT_FOUND:
        return "it, or a library that it needs, is not found";
    case ERROR_PROC_NOT_FOUND:
        return "a function that it needs is not there";
    case ERROR_DLL_INIT_FAILED:
        return "its initialisation failed";
    case ERROR_NOACCESS:
        return "its initialisation crashed";
    case ERROR_BAD_EXE_FORMAT:
        return "it is no library for this platform";
    default:
        return "the loader refuses it";
    }
}

} // namespace

Missing missingFor(const std::filesystem::path& file) {
    Missing missing;
    std::set<std::string> seen;
    look(file, seen, missing);
    return missing;
}

void* loadedEntryPoint(const std::string& fileName, std::string& error) {
    HMODULE const library = LoadLibraryA(fileName.c_str());
    void* const function = library != nullptr
                               ? reinterpret_cast<void*>(GetProcAddress(library, "createBackend"))
                               : nullptr;
    if (function == nullptr) {
        const DWORD code = GetLastError();
        error = wordsFor(code) + " (error " + std::to_string(code) + ")";
    }
    return function;
}

std::filesystem::path fileWith(void* function) {
    HMODULE module = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                           GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<const char*>(function), &module);
    std::string file(MAX_PATH, '\0');
    file.resize(GetModuleFileNameA(module, file.data(), MAX_PATH));
    return file;
}

} // namespace backendcheck
