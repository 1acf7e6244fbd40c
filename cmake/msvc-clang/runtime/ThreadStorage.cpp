#include "Start.h"

#include <stdlib.h>

#include <windows.h>

// Thread-local variables: the directory that the loader reads, and the constructors and destructors
// of a thread's objects.

#pragma section(".tls", long, read, write)
#pragma section(".tls$ZZZ", long, read, write)
#pragma section(".CRT$XLA", long, read)
#pragma section(".CRT$XLD", long, read)
#pragma section(".CRT$XLZ", long, read)
#pragma section(".CRT$XDA", long, read)
#pragma section(".CRT$XDZ", long, read)
#pragma section(".rdata$T", long, read)

namespace {

struct Destructor {
    Destructor* next;
    _PVFV destroy;
};

__declspec(thread) Destructor* destructors = nullptr;

void destroyObjects() {
    while (Destructor* const last = destructors) {
        destructors = last->next;
        last->destroy();
        free(last);
    }
}

} // namespace

extern "C" {

// The loader calls it before the entry point. The compiler refers to it where a variable has a
// constructor.
void NTAPI __dyn_tls_init(PVOID, DWORD reason, PVOID) {
    if (reason == DLL_THREAD_ATTACH) {
        __dyn_tls_on_demand_init();
    } else if (reason == DLL_THREAD_DETACH || reason == DLL_PROCESS_DETACH) {
        destroyObjects();
    }
}

ULONG _tls_index = 0;
__declspec(allocate(".tls")) char _tls_start = 0;
__declspec(allocate(".tls$ZZZ")) char _tls_end = 0;
__declspec(allocate(".CRT$XLA")) PIMAGE_TLS_CALLBACK __xl_a = nullptr;
__declspec(allocate(".CRT$XLD")) PIMAGE_TLS_CALLBACK __xl_d = __dyn_tls_init;
__declspec(allocate(".CRT$XLZ")) PIMAGE_TLS_CALLBACK __xl_z = nullptr;
__declspec(allocate(".CRT$XDA")) _PVFV __xd_a = nullptr;
__declspec(allocate(".CRT$XDZ")) _PVFV __xd_z = nullptr;

__declspec(allocate(".rdata$T")) extern const IMAGE_TLS_DIRECTORY64 _tls_used = {
    reinterpret_cast<ULONGLONG>(&_tls_start),
    reinterpret_cast<ULONGLONG>(&_tls_end),
    reinterpret_cast<ULONGLONG>(&_tls_index),
    reinterpret_cast<ULONGLONG>(&__xl_a + 1),
    0,
    {0}};

__declspec(thread) bool __tls_guard = false;

void __cdecl __dyn_tls_on_demand_init() {
    if (__tls_guard) {
        return;
    }
    __tls_guard = true;
    for (_PVFV* initializer = &__xd_a + 1; initializer != &__xd_z; ++initializer) {
        if (*initializer) {
            (*initializer)();
        }
    }
}

int __cdecl __tlregdtor(_PVFV destroy) {
    auto* const entry = static_cast<Destructor*>(malloc(sizeof(Destructor)));
    if (!entry) {
        return -1;
    }
    *entry = {destructors, destroy};
    destructors = entry;
    return 0;
}

} // extern "C"
