#include "Start.h"

#include <vcruntime_typeinfo.h>

#include <windows.h>

// The entry point of a DLL, in Visual C++'s order: the raw function, the C runtime, DllMain; and
// back.

#pragma comment(lib, "vcruntime140")
#pragma comment(lib, "ucrtbase")
#pragma comment(lib, "kernel32")
#pragma comment(lib, "ntdll")

extern "C" {

using RawDllMain = BOOL(WINAPI*)(HINSTANCE, DWORD, LPVOID);

// A library that is linked in can define it, as Boost.Thread does. The linker looks for it in the
// libraries before it takes the default.
extern RawDllMain const _pRawDllMain;
extern RawDllMain const _pDefaultRawDllMain = nullptr;
#pragma comment(linker, "/alternatename:_pRawDllMain=_pDefaultRawDllMain")

BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID);

static _onexit_table_t exitTable;
static int attached = 0;

static BOOL callRaw(HINSTANCE instance, DWORD reason, LPVOID reserved) {
    return _pRawDllMain ? _pRawDllMain(instance, reason, reserved) : TRUE;
}

static BOOL attachRuntime() {
    zol_exitTable = &exitTable;
    if (_initialize_onexit_table(&exitTable) != 0 || !zol_runInitializers()) {
        return FALSE;
    }
    ++attached;
    return TRUE;
}

static BOOL detachRuntime() {
    if (attached == 0) {
        return FALSE;
    }
    --attached;
    _execute_onexit_table(&exitTable);
    __std_type_info_destroy_list(__type_info_root_node);
    return TRUE;
}

static BOOL dispatch(HINSTANCE instance, DWORD reason, LPVOID reserved) {
    if (reason == DLL_PROCESS_DETACH && attached == 0) {
        return FALSE;
    }
    if (reason == DLL_PROCESS_ATTACH || reason == DLL_THREAD_ATTACH) {
        if (!callRaw(instance, reason, reserved) ||
            (reason == DLL_PROCESS_ATTACH && !attachRuntime())) {
            return FALSE;
        }
    }
    BOOL result = DllMain(instance, reason, reserved);
    if (reason == DLL_PROCESS_ATTACH && !result) {
        DllMain(instance, DLL_PROCESS_DETACH, reserved);
        detachRuntime();
        callRaw(instance, DLL_PROCESS_DETACH, reserved);
    }
    if (reason == DLL_PROCESS_DETACH || reason == DLL_THREAD_DETACH) {
        if (reason == DLL_PROCESS_DETACH && !detachRuntime()) {
            result = FALSE;
        }
        result = result && callRaw(instance, reason, reserved);
    }
    return result;
}

BOOL WINAPI _DllMainCRTStartup(HINSTANCE instance, DWORD reason, LPVOID reserved) {
    if (reason == DLL_PROCESS_ATTACH) {
        zol_initializeSecurityCookie();
    }
    return dispatch(instance, reason, reserved);
}

} // extern "C"
