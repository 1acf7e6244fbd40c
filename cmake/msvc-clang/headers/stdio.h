#pragma once

// Wine's header lacks the standard's name for a function that it has, and does not bring the
// constants of <share.h> along.

#pragma GCC system_header
#include_next <stdio.h>

#include <share.h>

inline int vsnprintf_s(char* buffer, size_t size, size_t count, const char* format,
                       va_list arguments) {
    return _vsnprintf_s(buffer, size, count, format, arguments);
}
