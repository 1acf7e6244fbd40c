#include "ProcessResources.h"

#include <stdexcept>
#include <vector>

#include <windows.h>

#include <psapi.h>

#include "OpenHandles.h"

namespace support {

namespace {

std::size_t bytesOf(HANDLE heap) {
    std::size_t bytes = 0;
    PROCESS_HEAP_ENTRY entry = {};
    HeapLock(heap);
    while (HeapWalk(heap, &entry)) {
        if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) {
            bytes += entry.cbData;
        }
    }
    const DWORD end = GetLastError();
    HeapUnlock(heap);
    if (end != ERROR_NO_MORE_ITEMS) {
        throw std::runtime_error("the system does not report the blocks of a heap");
    }
    return bytes;
}

std::size_t bytesOnTheHeap() {
    std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr) + 1);
    heaps.resize(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
    std::size_t bytes = 0;
    for (auto* const heap : heaps) {
        bytes += bytesOf(heap);
    }
    return bytes;
}

std::size_t regionsInUse() {
    std::size_t count = 0;
    MEMORY_BASIC_INFORMATION region = {};
    for (const char* address = nullptr; VirtualQuery(address, &region, sizeof(region)) != 0;
         address = static_cast<const char*>(region.BaseAddress) + region.RegionSize) {
        count += region.State != MEM_FREE ? 1U : 0U;
    }
    return count;
}

std::size_t bytesResident() {
    PROCESS_MEMORY_COUNTERS counters = {};
    if (!GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters))) {
        throw std::runtime_error("the system does not report the memory of the process");
    }
    return counters.WorkingSetSize;
}

} // namespace

const bool ProcessResources::memoryIsOurs = true;

ProcessResources ProcessResources::now() {
    return {bytesOnTheHeap(), support::openHandles(), regionsInUse(), bytesResident()};
}

} // namespace support
