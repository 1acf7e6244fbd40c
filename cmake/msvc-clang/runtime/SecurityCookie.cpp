#include "Start.h"

#include <stdint.h>

#include <windows.h>

// The check for overwritten stack frames (/GS), and what the linker asks for by name.

extern "C" {

constexpr uintptr_t defaultCookie = 0x00002B992DDFA232;

uintptr_t __security_cookie = defaultCookie;

void zol_initializeSecurityCookie() {
    LARGE_INTEGER counter;
    QueryPerformanceCounter(&counter);
    // The two upper bytes stay zero, as Visual C++ has it: a text that overwrites it must contain
    // them.
    __security_cookie = (static_cast<uintptr_t>(counter.QuadPart) * 0x9E3779B97F4A7C15 ^
                         reinterpret_cast<uintptr_t>(&counter)) &
                        0x0000FFFFFFFFFFFF;
}

void __cdecl __security_check_cookie(uintptr_t cookie) {
    if (cookie != __security_cookie) {
        __fastfail(FAST_FAIL_STACK_COOKIE_CHECK_FAILURE);
    }
}

// A module that uses floating-point numbers refers to it.
int _fltused = 0x9875;

} // extern "C"
