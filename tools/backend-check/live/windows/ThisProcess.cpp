#include "live/ThisProcess.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <new>

#include <windows.h>

#include <psapi.h>
#include <tlhelp32.h>

namespace backendcheck {

namespace {

MEMORY_BASIC_INFORMATION areaOf(const void* address) {
    MEMORY_BASIC_INFORMATION area = {};
    VirtualQuery(address, &area, sizeof(area));
    return area;
}

constexpr DWORD executable =
    PAGE_EXECUTE | PAGE_EXECUTE_READ | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
constexpr DWORD readable = PAGE_READONLY | PAGE_READWRITE | PAGE_WRITECOPY | PAGE_EXECUTE_READ |
                           PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;

} // namespace

bool isReadable(const void* begin, std::size_t size) {
    const MEMORY_BASIC_INFORMATION area = areaOf(begin);
    if (area.State != MEM_COMMIT || (area.Protect & readable) == 0 ||
        (area.Protect & PAGE_GUARD) != 0) {
        return false;
    }
    const std::size_t before = static_cast<std::size_t>(static_cast<const char*>(begin) -
                                                        static_cast<char*>(area.BaseAddress));
    const std::size_t rest = area.RegionSize - before;
    return rest >= size || isReadable(static_cast<const char*>(begin) + rest, size - rest);
}

bool isCode(const void* address) {
    const MEMORY_BASIC_INFORMATION area = areaOf(address);
    return area.State == MEM_COMMIT && (area.Protect & executable) != 0;
}

bool isOnThisStack(const void* address) {
    const int here = 0;
    return areaOf(&here).AllocationBase == areaOf(address).AllocationBase;
}

std::size_t pageSize() {
    SYSTEM_INFO system = {};
    GetSystemInfo(&system);
    return system.dwPageSize;
}

char* newPages(std::size_t size) {
    void* const pages = VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    if (pages == nullptr) {
        throw std::bad_alloc();
    }
    return static_cast<char*>(pages);
}

void makeReadOnly(char* pages, std::size_t size) {
    DWORD before = 0;
    VirtualProtect(pages, size, PAGE_READONLY, &before);
}

void makeUnreadable(char* pages, std::size_t size) {
    VirtualFree(pages, size, MEM_DECOMMIT);
}

std::size_t usedMemory() {
    PROCESS_MEMORY_COUNTERS counters = {};
    K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters));
    return counters.PagefileUsage;
}

std::size_t openHandles() {
    DWORD count = 0;
    if (GetProcessHandleCount(GetCurrentProcess(), &count) && count != 0) {
        return count;
    }
    // Wine does not count. Its handles are numbered by fours, and a new one gets the lowest number
    // that is free: many of them fill the gaps.
    constexpr std::uintptr_t step = 4;
    std::array<HANDLE, 128> probes = {};
    std::uintptr_t highest = 0;
    for (HANDLE& probe : probes) {
        probe = CreateEventA(nullptr, FALSE, FALSE, nullptr);
        highest = std::max(highest, reinterpret_cast<std::uintptr_t>(probe));
    }
    for (HANDLE const probe : probes) {
        CloseHandle(probe);
    }
    return highest / step;
}

std::size_t runningThreads() {
    HANDLE const snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry = {};
    entry.dwSize = sizeof(entry);
    std::size_t count = 0;
    for (BOOL more = Thread32First(snapshot, &entry); more; more = Thread32Next(snapshot, &entry)) {
        count += entry.th32OwnerProcessID == GetCurrentProcessId() ? 1U : 0U;
    }
    CloseHandle(snapshot);
    return count;
}

} // namespace backendcheck
