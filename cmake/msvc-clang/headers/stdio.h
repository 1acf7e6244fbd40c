#pragma once

// Wine's header lacks the standard's name for a function that it has, and does not bring the
// constants of <share.h> along. As in Microsoft's header, functions that do not check their
// arguments are deprecated.

#pragma GCC system_header
#include_next <stdio.h>

#include <share.h>

inline int vsnprintf_s(char* buffer, size_t size, size_t count, const char* format,
                       va_list arguments) {
    return _vsnprintf_s(buffer, size, count, format, arguments);
}

#if !defined(_CRT_SECURE_NO_WARNINGS)
extern "C" {
__declspec(deprecated) FILE* __cdecl fopen(const char*, const char*);
__declspec(deprecated) FILE* __cdecl freopen(const char*, const char*, FILE*);
__declspec(deprecated) FILE* __cdecl tmpfile(void);
__declspec(deprecated) char* __cdecl tmpnam(char*);
__declspec(deprecated) FILE* __cdecl _wfopen(const wchar_t*, const wchar_t*);
__declspec(deprecated) FILE* __cdecl _wfreopen(const wchar_t*, const wchar_t*, FILE*);
__declspec(deprecated) int __cdecl sprintf(char*, const char*, ...);
__declspec(deprecated) int __cdecl vsprintf(char*, const char*, va_list);
__declspec(deprecated) int __cdecl scanf(const char*, ...);
__declspec(deprecated) int __cdecl fscanf(FILE*, const char*, ...);
__declspec(deprecated) int __cdecl sscanf(const char*, const char*, ...);
}
#endif
