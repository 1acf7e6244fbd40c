// A module in which each step of the start-up code leaves a trace in the program.

#include <windows.h>

namespace {

void trace(const char* step) {
    using Trace = void (*)(const char*);
    const auto function = reinterpret_cast<Trace>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(nullptr), "traceOfRuntime")));
    if (function != nullptr) {
        function(step);
    }
}

const char* const reasons[] = {"detach", "attach", "thread attach", "thread detach"};

BOOL WINAPI rawDllMain(HINSTANCE, DWORD reason, LPVOID) {
    trace("raw");
    trace(reasons[reason]);
    return TRUE;
}

struct StaticObject {
    StaticObject() { trace("constructor"); }
    ~StaticObject() { trace("destructor"); }
};

struct ThreadObject {
    ThreadObject() { trace("constructor of the thread"); }
    ~ThreadObject() { trace("destructor of the thread"); }
};

const StaticObject object;
thread_local const ThreadObject threadObject;

} // namespace

extern "C" {

using RawDllMain = BOOL(WINAPI*)(HINSTANCE, DWORD, LPVOID);
extern RawDllMain const _pRawDllMain = rawDllMain;

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
    trace("DllMain");
    trace(reasons[reason]);
    return TRUE;
}

/// Returns the object that the function creates, once for the module.
__declspec(dllexport) int* createOnce(int* (*create)()) {
    static int* const created = create();
    return created;
}

} // extern "C"
