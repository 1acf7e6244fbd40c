#include "Start.h"

#include <stdlib.h>

#include <windows.h>

// The entry point of a console program.

#pragma comment(lib, "vcruntime140")
#pragma comment(lib, "ucrtbase")
#pragma comment(lib, "kernel32")
#pragma comment(lib, "ntdll")

extern "C" {

int main(int count, char** arguments, char** environment);
[[noreturn]] void __cdecl __std_terminate();
int* __cdecl __p___argc(void);
char*** __cdecl __p___argv(void);

constexpr DWORD cxxException = 0xE06D7363;

// An exception that nothing catches ends the process by terminate.
static LONG WINAPI onUnhandled(EXCEPTION_POINTERS* exception) {
    if (exception->ExceptionRecord->ExceptionCode == cxxException) {
        __std_terminate();
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

int mainCRTStartup() {
    zol_initializeSecurityCookie();
    SetUnhandledExceptionFilter(onUnhandled);
    _set_app_type(_crt_console_app);
    if (_configure_narrow_argv(_crt_argv_unexpanded_arguments) != 0 ||
        _initialize_narrow_environment() != 0 || !zol_runInitializers()) {
        return 255;
    }
    const int result = main(*__p___argc(), *__p___argv(), _get_initial_narrow_environment());
    exit(result);
}

} // extern "C"
