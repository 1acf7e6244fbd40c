#pragma once

// Wine's header lacks these. As in Microsoft's header, functions that do not check their arguments
// are deprecated.

#pragma GCC system_header
#include_next <wchar.h>

extern "C" {
int __cdecl _iswcntrl_l(wint_t, _locale_t);
int __cdecl _iswxdigit_l(wint_t, _locale_t);
errno_t __cdecl wcrtomb_s(size_t*, char*, size_t, wchar_t, mbstate_t*);
double __cdecl wcstod(const wchar_t*, wchar_t**);
}

inline long double wcstold(const wchar_t* text, wchar_t** end) {
    return wcstod(text, end);
}

#if !defined(_CRT_SECURE_NO_WARNINGS)
extern "C" {
__declspec(deprecated) wchar_t* __cdecl wcscat(wchar_t*, const wchar_t*);
__declspec(deprecated) wchar_t* __cdecl wcscpy(wchar_t*, const wchar_t*);
__declspec(deprecated) wchar_t* __cdecl wcsncat(wchar_t*, const wchar_t*, size_t);
__declspec(deprecated) wchar_t* __cdecl wcsncpy(wchar_t*, const wchar_t*, size_t);
}
#endif
