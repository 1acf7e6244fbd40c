#include "live/ThisProcess.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <exception>
#include <new>
#include <utility>

#include <windows.h>

#include <psapi.h>
#include <tlhelp32.h>

#include "live/CrashHandler.h"
#include "live/GuardedText.h"

namespace backendcheck {

namespace {

LONG WINAPI onCrash(EXCEPTION_POINTERS* pointers) {
    const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
    if (record.ExceptionCode == static_cast<DWORD>(EXCEPTION_ACCESS_VIOLATION)) {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): the system reports addresses as integers
        const auto* const address = reinterpret_cast<const void*>(record.ExceptionInformation[1]);
        if (const char* const fault = faultAt(address, record.ExceptionInformation[0] == 1)) {
            crashRecord->crashed(fault);
        }
    }
    TerminateProcess(GetCurrentProcess(), record.ExceptionCode);
    return EXCEPTION_EXECUTE_HANDLER;
}

/// Called first for every exception: for those that the loader would catch, and stack overflows.
LONG WINAPI onAnyException(EXCEPTION_POINTERS* pointers) {
    const DWORD code = pointers->ExceptionRecord->ExceptionCode;
    if (code == static_cast<DWORD>(EXCEPTION_STACK_OVERFLOW)) {
        crashRecord->crashed(stackOverflow);
        TerminateProcess(GetCurrentProcess(), code);
    }
    if (code == static_cast<DWORD>(EXCEPTION_ACCESS_VIOLATION) && crashRecord->isDone()) {
        return onCrash(pointers);
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

} // namespace

void limitThisProcess() {
    // The supervisor limits the memory.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
}

void installCrashHandlers() {
    SetUnhandledExceptionFilter(&onCrash);
    AddVectoredExceptionHandler(1, &onAnyException);
    ULONG room = 65536; // to handle an overflow in
    SetThreadStackGuarantee(&room);
}

void endNow(int code) {
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(code));
    std::terminate();
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
    for (auto* const probe : probes) {
        CloseHandle(probe);
    }
    return highest / step;
}

std::size_t runningThreads() {
    auto* const snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry = {};
    entry.dwSize = sizeof(entry);
    std::size_t count = 0;
    for (BOOL more = Thread32First(snapshot, &entry); more; more = Thread32Next(snapshot, &entry)) {
        count += entry.th32OwnerProcessID == GetCurrentProcessId() ? 1U : 0U;
    }
    CloseHandle(snapshot);
    return count;
}

std::vector<HostSetting> platformSettings() {
    std::vector<HostSetting> settings;
    constexpr std::array<std::pair<DWORD, const char*>, 3> streams = {
        {{STD_INPUT_HANDLE, "standard input"},
         {STD_OUTPUT_HANDLE, "standard output"},
         {STD_ERROR_HANDLE, "standard error"}}};
    for (const auto& [which, name] : streams) {
        auto* const handle = GetStdHandle(which);
        DWORD flags = 0;
        const bool isOpen = handle != INVALID_HANDLE_VALUE && GetHandleInformation(handle, &flags);
        settings.push_back({name, isOpen ? "open" : "closed", true});
    }
    settings.push_back({"the error mode", std::to_string(GetErrorMode())});
    settings.push_back(
        {"the priority class", std::to_string(GetPriorityClass(GetCurrentProcess()))});
    std::string environment;
    char* const block = GetEnvironmentStringsA();
    for (const char* variable = block; *variable != '\0'; variable += std::strlen(variable) + 1) {
        environment += std::string(variable) + ' ';
    }
    FreeEnvironmentStringsA(block);
    settings.push_back({"the environment", environment});
    return settings;
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

} // namespace backendcheck
