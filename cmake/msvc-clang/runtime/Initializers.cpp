#include "Start.h"

#include <windows.h>

// The tables of initializers, which the linker sorts by the names of their sections, and what a
// module registers for its end.

#pragma section(".CRT$XIA", long, read)
#pragma section(".CRT$XIZ", long, read)
#pragma section(".CRT$XCA", long, read)
#pragma section(".CRT$XCZ", long, read)

extern "C" {

__declspec(allocate(".CRT$XIA")) _PIFV __xi_a[] = {nullptr};
__declspec(allocate(".CRT$XIZ")) _PIFV __xi_z[] = {nullptr};
__declspec(allocate(".CRT$XCA")) _PVFV __xc_a[] = {nullptr};
__declspec(allocate(".CRT$XCZ")) _PVFV __xc_z[] = {nullptr};

int __cdecl _initterm_e(_PIFV* first, _PIFV* last);
void __cdecl _initterm(_PVFV* first, _PVFV* last);

_onexit_table_t* zol_exitTable = nullptr;

bool zol_runInitializers() {
    if (_initterm_e(__xi_a, __xi_z) != 0) {
        return false;
    }
    _initterm(__xc_a, __xc_z);
    __dyn_tls_on_demand_init();
    return true;
}

_onexit_t __cdecl _onexit(_onexit_t function) {
    const int failed = zol_exitTable ? _register_onexit_function(zol_exitTable, function)
                                     : _crt_atexit(reinterpret_cast<_PVFV>(function));
    return failed == 0 ? function : nullptr;
}

int __cdecl atexit(_PVFV function) {
    return _onexit(reinterpret_cast<_onexit_t>(function)) ? 0 : -1;
}

} // extern "C"
