#pragma once

// Wine's header lacks these, and has MB_CUR_MAX under another name. As in Microsoft's header,
// functions that do not check their arguments are deprecated.

#pragma GCC system_header
#include_next <stdlib.h>

extern "C" {
errno_t __cdecl getenv_s(size_t*, char*, size_t, const char*);
double __cdecl _strtod_l(const char*, char**, _locale_t);
float __cdecl _strtof_l(const char*, char**, _locale_t);
int* __cdecl __sys_nerr(void);
unsigned __cdecl _set_abort_behavior(unsigned, unsigned);
errno_t __cdecl _dupenv_s(char**, size_t*, const char*);
int __cdecl ___mb_cur_max_l_func(_locale_t);
}

#if !defined(_sys_nerr)
#define _sys_nerr (*__sys_nerr())
#endif

#if !defined(MB_CUR_MAX)
#define MB_CUR_MAX __mb_cur_max
#endif

#if !defined(_CRT_SECURE_NO_WARNINGS)
extern "C" {
__declspec(deprecated) char* __cdecl getenv(const char*);
__declspec(deprecated) wchar_t* __cdecl _wgetenv(const wchar_t*);
__declspec(deprecated) size_t __cdecl mbstowcs(wchar_t*, const char*, size_t);
__declspec(deprecated) size_t __cdecl wcstombs(char*, const wchar_t*, size_t);
}
#endif
