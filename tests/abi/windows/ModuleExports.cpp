#include <stdexcept>

#include <windows.h>

#include "ModuleExports.h"

namespace surface {

namespace {

/// The data at that offset from the address where the module is loaded.
template <typename Entry>
const Entry* at(HMODULE module, DWORD offset) {
    return reinterpret_cast<const Entry*>(reinterpret_cast<const char*>(module) + offset);
}

} // namespace

ModuleExports exportsOf(const std::string& module) {
    HMODULE const handle = LoadLibraryA((module + ".dll").c_str());
    if (handle == nullptr) {
        throw std::runtime_error("cannot load " + module);
    }
    const auto* const dosHeader = at<IMAGE_DOS_HEADER>(handle, 0);
    const auto* const headers =
        at<IMAGE_NT_HEADERS64>(handle, static_cast<DWORD>(dosHeader->e_lfanew));
    const IMAGE_DATA_DIRECTORY& directory =
        headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];

    ModuleExports found;
    if (directory.Size != 0) {
        const auto* const table = at<IMAGE_EXPORT_DIRECTORY>(handle, directory.VirtualAddress);
        found.module = at<char>(handle, table->Name);
        const auto* const names = at<DWORD>(handle, table->AddressOfNames);
        for (DWORD i = 0; i < table->NumberOfNames; ++i) {
            found.names.emplace_back(at<char>(handle, names[i]));
        }
        if (table->NumberOfFunctions != table->NumberOfNames) {
            throw std::runtime_error(module + " exports something without a name");
        }
    }
    return found;
}

} // namespace surface
