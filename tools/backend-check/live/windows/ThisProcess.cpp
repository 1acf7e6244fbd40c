#include "live/ThisProcess.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cwchar>
#include <exception>
#include <new>
#include <utility>

#include <windows.h>

#include <psapi.h>
#include <tlhelp32.h>
#include <winternl.h>

#include "live/CrashHandler.h"
#include "live/GuardedText.h"
#include "live/Heap.h"

namespace backendcheck {

namespace {

// What Visual C++ raises for the statement throw.
constexpr DWORD exceptionOfVisualCpp = 0xE06D7363;

LONG WINAPI onCrash(EXCEPTION_POINTERS* pointers) {
    const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
    if (record.ExceptionCode == static_cast<DWORD>(EXCEPTION_ACCESS_VIOLATION)) {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): the system reports addresses as integers
        const auto* const address = reinterpret_cast<const void*>(record.ExceptionInformation[1]);
        if (const char* const fault = faultAt(address, record.ExceptionInformation[0] == 1)) {
            crashRecord->crashed(fault);
        } else if (const char* const freedFault = faultOfFreedBlock(address)) {
            crashRecord->crashed(freedFault);
        }
    } else if (record.ExceptionCode == exceptionOfVisualCpp) {
        // This filter replaces the runtime library's, which calls std::terminate.
        crashRecord->crashed("uncaught exception: it came out of a thread");
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

template <typename Value>
std::string bytesOf(const Value& value) {
    return {reinterpret_cast<const char*>(&value), sizeof(value)};
}

// Those that the C runtime library knows.
constexpr std::array<std::pair<int, const char*>, 7> runtimeSignals = {{{SIGABRT, "SIGABRT"},
                                                                        {SIGBREAK, "SIGBREAK"},
                                                                        {SIGFPE, "SIGFPE"},
                                                                        {SIGILL, "SIGILL"},
                                                                        {SIGINT, "SIGINT"},
                                                                        {SIGSEGV, "SIGSEGV"},
                                                                        {SIGTERM, "SIGTERM"}}};

HostSetting handlerOf(int signal, const char* name) {
    auto* const handler = std::signal(signal, SIG_DFL);
    std::signal(signal, handler);
    const char* const value = handler == SIG_DFL   ? "the default"
                              : handler == SIG_IGN ? "ignored"
                                                   : "a handler";
    return {std::string("the handling of ") + name, value, true, bytesOf(handler),
            "signal handlers"};
}

HostSetting streamOf(DWORD which, const char* name) {
    auto* const handle = GetStdHandle(which);
    DWORD flags = 0;
    const bool isOpen = handle != INVALID_HANDLE_VALUE && GetHandleInformation(handle, &flags);
    // A device has no such information.
    BY_HANDLE_FILE_INFORMATION file = {};
    const bool isFile = isOpen && GetFileInformationByHandle(handle, &file);
    return {std::string("the file of ") + name, isOpen ? "open" : "closed", true,
            isFile ? bytesOf(file.dwVolumeSerialNumber) + bytesOf(file.nFileIndexHigh) +
                         bytesOf(file.nFileIndexLow)
                   : std::string(),
            "standard streams"};
}

void (*calledAfterDestructors)() = nullptr;
BOOL(WINAPI* entryOfPlugin)(HINSTANCE, DWORD, LPVOID) = nullptr;

BOOL WINAPI enterPlugin(HINSTANCE module, DWORD reason, LPVOID reserved) {
    const BOOL result = entryOfPlugin(module, reason, reserved);
    if (reason == DLL_PROCESS_DETACH) {
        calledAfterDestructors();
    }
    return result;
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

void atProcessEnd(bool (*handler)()) {
    static bool (*called)() = handler;
    std::atexit([] { (void)called(); });
}

void afterDestructorsOf(const std::filesystem::path& file, void (*handler)()) {
    // A module that was loaded before the plug-in is notified of the end of the process after it.
    // The loader calls such modules itself; in place of one more module, this replaces the entry
    // point in the loader's list of modules. No import library has this function.
    const auto findEntry =
        reinterpret_cast<LONG(NTAPI*)(void*, LDR_DATA_TABLE_ENTRY**)>(reinterpret_cast<void*>(
            GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "LdrFindEntryForAddress")));
    LDR_DATA_TABLE_ENTRY* entry = nullptr;
    if (findEntry == nullptr || findEntry(GetModuleHandleW(file.filename().c_str()), &entry) != 0) {
        return;
    }
    // The headers do not all name the member after DllBase.
    void*& entryPoint = (&entry->DllBase)[1];
    if (entryPoint != nullptr) {
        calledAfterDestructors = handler;
        entryOfPlugin = reinterpret_cast<decltype(entryOfPlugin)>(entryPoint);
        entryPoint = reinterpret_cast<void*>(&enterPlugin);
    }
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
    settings.reserve(runtimeSignals.size());
    for (const auto& [signal, name] : runtimeSignals) {
        settings.push_back(handlerOf(signal, name));
    }
    auto* const filter = SetUnhandledExceptionFilter(nullptr);
    SetUnhandledExceptionFilter(filter);
    settings.push_back({"the filter of unhandled exceptions", {}, true, bytesOf(filter)});
    constexpr std::array<std::pair<DWORD, const char*>, 3> streams = {
        {{STD_INPUT_HANDLE, "standard input"},
         {STD_OUTPUT_HANDLE, "standard output"},
         {STD_ERROR_HANDLE, "standard error"}}};
    for (const auto& [which, name] : streams) {
        settings.push_back(streamOf(which, name));
    }
    settings.push_back({"the error mode", {}, false, std::to_string(GetErrorMode())});
    settings.push_back(
        {"the priority class", {}, false, std::to_string(GetPriorityClass(GetCurrentProcess()))});
    std::string environment;
    wchar_t* const block = GetEnvironmentStringsW();
    for (const wchar_t* variable = block; *variable != L'\0';
         variable += std::wcslen(variable) + 1) {
        environment.append(reinterpret_cast<const char*>(variable),
                           (std::wcslen(variable) + 1) * sizeof(wchar_t));
    }
    FreeEnvironmentStringsW(block);
    settings.push_back({"the environment", {}, false, environment});
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

void reserveUnreadable(void* address, std::size_t size) {
    VirtualAlloc(address, size, MEM_RESERVE, PAGE_NOACCESS);
}

} // namespace backendcheck
