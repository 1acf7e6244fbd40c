#include "Thread.h"

#include <algorithm>
#include <new>

#include <process.h>
#include <windows.h>

#include "Process.h"

namespace ZOL::Backends {

namespace {

struct Start {
    void (*function)(void*);
    void* argument;
};

unsigned __stdcall run(void* argument) {
    const std::unique_ptr<Start> start(static_cast<Start*>(argument));
    start->function(start->argument);
    return 0;
}

} // namespace

bool startThread(void (*function)(void*), void* argument) noexcept {
    if (!keepModuleLoaded()) {
        return false;
    }
    std::unique_ptr<Start> start(new (std::nothrow) Start{function, argument});
    if (start == nullptr) {
        return false;
    }
    const std::uintptr_t thread = _beginthreadex(nullptr, 0, run, start.get(), 0, nullptr);
    if (thread == 0) {
        return false;
    }
    start.release(); // NOLINT(bugprone-unused-return-value): the thread deletes it
    CloseHandle(reinterpret_cast<HANDLE>(thread)); // NOLINT(performance-no-int-to-ptr)
    return true;
}

void nameThread(const std::string& name) noexcept {
    // Windows 10 and newer have it.
    using SetDescription = HRESULT(WINAPI*)(HANDLE, PCWSTR);
    const auto setDescription = reinterpret_cast<SetDescription>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "SetThreadDescription")));
    if (setDescription == nullptr) {
        return;
    }
    try {
        setDescription(GetCurrentThread(), std::wstring(name.begin(), name.end()).c_str());
    } catch (const std::bad_alloc&) {
        return; // it stays without a name
    }
}

struct WakeSignal::State {
    HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
};

WakeSignal::WakeSignal() : state_(std::make_unique<State>()) {
    if (state_->event == nullptr) {
        throw std::bad_alloc();
    }
}

WakeSignal::~WakeSignal() {
    CloseHandle(state_->event);
}

void WakeSignal::set() noexcept {
    SetEvent(state_->event);
}

void WakeSignal::wait(std::optional<std::chrono::milliseconds> time) noexcept {
    constexpr std::chrono::milliseconds maxTime(INFINITE - 1);
    WaitForSingleObject(state_->event,
                        time ? static_cast<DWORD>(std::min(*time, maxTime).count()) : INFINITE);
}

} // namespace ZOL::Backends
