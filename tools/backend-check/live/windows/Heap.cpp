// Replaces the system's heap functions in the import tables of the C runtime libraries, through
// which all of malloc, free, new and delete of the process's modules go.

#include "live/Heap.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

#include <windows.h>

#include <malloc.h>

#include "live/HeapHooks.h"

namespace backendcheck {

namespace {

HANDLE heapOfRuntime = nullptr; // blocks of others are not kept
decltype(&HeapAlloc) heapAlloc = &HeapAlloc;
decltype(&HeapReAlloc) heapReAlloc = &HeapReAlloc;
decltype(&HeapFree) heapFree = &HeapFree;

constexpr auto invalidSize = static_cast<SIZE_T>(-1);

LPVOID WINAPI allocate(HANDLE heap, DWORD flags, SIZE_T size) {
    void* const block = heapAlloc(heap, flags, size);
    if (block != nullptr && heap == heapOfRuntime) {
        countAllocated(sizeOfBlock(block));
    }
    return block;
}

BOOL WINAPI deallocate(HANDLE heap, DWORD flags, LPVOID block) {
    const SIZE_T size =
        block != nullptr && heap == heapOfRuntime ? HeapSize(heap, 0, block) : invalidSize;
    if (size == invalidSize) {
        return heapFree(heap, flags, block);
    }
    countFreed(size);
    keepBlock(block, size);
    return TRUE;
}

LPVOID WINAPI reallocate(HANDLE heap, DWORD flags, LPVOID block, SIZE_T size) {
    const SIZE_T before =
        block != nullptr && heap == heapOfRuntime ? HeapSize(heap, 0, block) : invalidSize;
    if (before == invalidSize) {
        return heapReAlloc(heap, flags, block, size);
    }
    if ((flags & HEAP_REALLOC_IN_PLACE_ONLY) != 0) {
        void* const same = heapReAlloc(heap, flags, block, size);
        if (same != nullptr) {
            countFreed(before);
            countAllocated(sizeOfBlock(same));
        }
        return same;
    }
    void* const result = allocate(heap, flags, size);
    if (result != nullptr) {
        std::memcpy(result, block, std::min(size, before));
        deallocate(heap, 0, block);
    }
    return result;
}

struct Replacement {
    std::string_view name;
    ULONG_PTR function;
};

void replaceImport(ULONG_PTR& entry, const Replacement& replacement) {
    DWORD before = 0;
    VirtualProtect(&entry, sizeof(entry), PAGE_READWRITE, &before);
    entry = replacement.function;
    VirtualProtect(&entry, sizeof(entry), before, &before);
}

/// Replaces functions in the import table of a loaded module.
void replaceImports(HMODULE module) {
    const std::array<Replacement, 6> replacements = {{
        {"HeapAlloc", reinterpret_cast<ULONG_PTR>(&allocate)},
        {"HeapReAlloc", reinterpret_cast<ULONG_PTR>(&reallocate)},
        {"HeapFree", reinterpret_cast<ULONG_PTR>(&deallocate)},
        {"RtlAllocateHeap", reinterpret_cast<ULONG_PTR>(&allocate)},
        {"RtlReAllocateHeap", reinterpret_cast<ULONG_PTR>(&reallocate)},
        {"RtlFreeHeap", reinterpret_cast<ULONG_PTR>(&deallocate)},
    }};
    auto* const base = reinterpret_cast<char*>(module);
    const auto at = [base](auto*& pointer, std::size_t offset) {
        pointer = reinterpret_cast<std::remove_reference_t<decltype(pointer)>>(base + offset);
    };
    const IMAGE_DOS_HEADER* dos = nullptr;
    at(dos, 0);
    const IMAGE_NT_HEADERS64* headers = nullptr;
    at(headers, static_cast<std::size_t>(dos->e_lfanew));
    const IMAGE_DATA_DIRECTORY& directory =
        headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    const IMAGE_IMPORT_DESCRIPTOR* library = nullptr;
    at(library, directory.VirtualAddress);
    for (; directory.Size != 0 && library->Name != 0; ++library) {
        if (library->OriginalFirstThunk == 0) {
            continue; // without names
        }
        const IMAGE_THUNK_DATA64* name = nullptr;
        at(name, library->OriginalFirstThunk);
        ULONG_PTR* function = nullptr;
        at(function, library->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++function) {
            if (IMAGE_SNAP_BY_ORDINAL64(name->u1.Ordinal)) {
                continue;
            }
            const IMAGE_IMPORT_BY_NAME* imported = nullptr;
            at(imported, name->u1.AddressOfData);
            const std::string_view wanted = reinterpret_cast<const char*>(imported->Name);
            for (const Replacement& replacement : replacements) {
                if (wanted == replacement.name) {
                    replaceImport(*function, replacement);
                }
            }
        }
    }
}

} // namespace

void hookHeap() {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the runtime library returns its handle as a number
    heapOfRuntime = reinterpret_cast<HANDLE>(_get_heap_handle());
    for (const wchar_t* const runtime : {L"msvcrt.dll", L"ucrtbase.dll", L"ucrtbased.dll"}) {
        if (HMODULE const module = GetModuleHandleW(runtime)) {
            replaceImports(module);
        }
    }
}

std::size_t sizeOfBlock(void* block) {
    return HeapSize(heapOfRuntime, 0, block);
}

void releaseBlock(void* block) {
    heapFree(heapOfRuntime, 0, block);
}

} // namespace backendcheck
