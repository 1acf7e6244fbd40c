#include "Process.h"

#include <filesystem>

#include <windows.h>

#include "Text.h"

namespace ZOL::Backends {

namespace {

/// A function of a module, or null.
template <typename Function>
Function functionOf(HMODULE module, const char* name) noexcept {
    return module == nullptr
               ? nullptr
               : reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

} // namespace

std::string programName() {
    constexpr std::size_t longestPath = 32768;
    std::wstring path(longestPath, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return escapedWord(utf8(std::filesystem::path(path).stem().native()));
}

unsigned long processId() {
    return GetCurrentProcessId();
}

std::string hostName() {
    wchar_t name[256] = L"";
    DWORD size = static_cast<DWORD>(std::size(name));
    if (!GetComputerNameExW(ComputerNameDnsHostname, name, &size)) {
        size = 0;
    }
    return escapedWord(utf8({name, size}));
}

unsigned forkCount() noexcept {
    return 0;
}

bool areOtherThreadsGone() noexcept {
    using Query = BOOLEAN(WINAPI*)();
    static const auto isShutdownInProgress =
        functionOf<Query>(GetModuleHandleW(L"ntdll.dll"), "RtlDllShutdownInProgress");
    return isShutdownInProgress != nullptr && isShutdownInProgress() != 0;
}

void waitForKilledThreads() noexcept {
    constexpr DWORD milliseconds = 20;
    Sleep(milliseconds);
}

bool keepModuleLoaded() noexcept {
    HMODULE module = nullptr;
    static const char marker = 0;
    return GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                  GET_MODULE_HANDLE_EX_FLAG_PIN,
                              reinterpret_cast<LPCWSTR>(&marker), &module) != 0;
}

void callAtExit(void (*function)()) noexcept {
    // atexit() of a plug-in registers with the plug-in: its functions run after the threads are
    // gone. The host may use either C runtime, so each one that is loaded is told.
    using Function = void(__cdecl*)();
    using Register = int(__cdecl*)(Function);
    using OnExit = int(__cdecl*)();
    using RegisterOnExit = OnExit(__cdecl*)(OnExit);
    for (const wchar_t* const runtime : {L"ucrtbase.dll", L"ucrtbased.dll"}) {
        const auto registerFunction =
            functionOf<Register>(GetModuleHandleW(runtime), "_crt_atexit");
        if (registerFunction != nullptr) {
            registerFunction(function);
        }
    }
    const auto registerOnExit =
        functionOf<RegisterOnExit>(GetModuleHandleW(L"msvcrt.dll"), "_onexit");
    if (registerOnExit != nullptr) {
        registerOnExit(reinterpret_cast<OnExit>(reinterpret_cast<void*>(function)));
    }
}

} // namespace ZOL::Backends
