#include "ImportHook.h"

#include <cstring>

namespace support {

namespace {

template <typename Part>
Part* at(HMODULE module, DWORD offset) {
    return reinterpret_cast<Part*>(reinterpret_cast<char*>(module) + offset);
}

} // namespace

void* hookImport(HMODULE module, const char* name, void* replacement) {
    const auto* const dos = at<IMAGE_DOS_HEADER>(module, 0);
    const auto* const headers = at<IMAGE_NT_HEADERS>(module, static_cast<DWORD>(dos->e_lfanew));
    const IMAGE_DATA_DIRECTORY& directory =
        headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];

    for (const auto* library = at<IMAGE_IMPORT_DESCRIPTOR>(module, directory.VirtualAddress);
         library->Name != 0; ++library) {
        const auto* names = at<IMAGE_THUNK_DATA>(module, library->OriginalFirstThunk);
        auto* slots = at<IMAGE_THUNK_DATA>(module, library->FirstThunk);
        for (; names->u1.AddressOfData != 0; ++names, ++slots) {
            if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) {
                continue;
            }
            const auto* const entry =
                at<IMAGE_IMPORT_BY_NAME>(module, static_cast<DWORD>(names->u1.AddressOfData));
            if (std::strcmp(reinterpret_cast<const char*>(entry->Name), name) != 0) {
                continue;
            }
            DWORD protection = 0;
            VirtualProtect(slots, sizeof(*slots), PAGE_READWRITE, &protection);
            // NOLINTNEXTLINE(performance-no-int-to-ptr): import tables hold addresses as integers
            void* const before = reinterpret_cast<void*>(slots->u1.Function);
            slots->u1.Function = reinterpret_cast<ULONGLONG>(replacement);
            VirtualProtect(slots, sizeof(*slots), protection, &protection);
            return before;
        }
    }
    return nullptr;
}

} // namespace support
