#include "ThreadEnd.h"

#include <windows.h>

namespace {

using Function = void(const char*);

void WINAPI callFromFiber(void* function) {
    if (function != nullptr) {
        reinterpret_cast<Function*>(function)("callback of a fiber's slot");
    }
}

const DWORD fiberSlot = FlsAlloc(callFromFiber);

// Not thread_local, which mingw-w64's runtime may have given back already.
const DWORD threadSlot = TlsAlloc();

} // namespace

// The loader holds its lock.
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
    void* const function = reason == DLL_THREAD_DETACH ? TlsGetValue(threadSlot) : nullptr;
    if (function != nullptr) {
        reinterpret_cast<Function*>(function)("entry function");
    }
    return TRUE;
}

void atThreadEnd(Function* function) {
    TlsSetValue(threadSlot, reinterpret_cast<void*>(function));
    FlsSetValue(fiberSlot, reinterpret_cast<void*>(function));
}

void forgetThreadEnds() {
    FlsFree(fiberSlot);
    TlsFree(threadSlot);
}
