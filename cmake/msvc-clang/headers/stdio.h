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
}
#endif
