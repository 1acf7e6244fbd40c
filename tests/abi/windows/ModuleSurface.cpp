#include <stdexcept>

#include <windows.h>

#include "ModuleSurface.h"

namespace boundary {

namespace {

/// What stands at that distance from where the module is loaded.
template <typename Entry>
const Entry* at(HMODULE module, DWORD distance) {
    return reinterpret_cast<const Entry*>(reinterpret_cast<const char*>(module) + distance);
}

} // namespace

ModuleSurface surfaceOf(const std::string& moduleName) {
    HMODULE const module = LoadLibraryA((moduleName + ".dll").c_str());
    if (module == nullptr) {
        throw std::runtime_error("cannot load " + moduleName);
    }
    const auto* const dosHeader = at<IMAGE_DOS_HEADER>(module, 0);
    const auto* const headers =
        at<IMAGE_NT_HEADERS64>(module, static_cast<DWORD>(dosHeader->e_lfanew));
    const IMAGE_DATA_DIRECTORY& place =
        headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];

    ModuleSurface surface;
    if (place.Size != 0) {
        const auto* const table = at<IMAGE_EXPORT_DIRECTORY>(module, place.VirtualAddress);
        surface.name = at<char>(module, table->Name);
        const auto* const names = at<DWORD>(module, table->AddressOfNames);
        for (DWORD i = 0; i < table->NumberOfNames; ++i) {
            surface.exports.emplace_back(at<char>(module, names[i]));
        }
        if (table->NumberOfFunctions != table->NumberOfNames) {
            throw std::runtime_error(moduleName + " exports something without a name");
        }
    }
    return surface;
}

} // namespace boundary
