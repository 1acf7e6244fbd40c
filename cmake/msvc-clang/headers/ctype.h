#pragma once

// Wine's header lacks these of the functions that take a locale, and the table of classes.

#pragma GCC system_header
#include_next <ctype.h>

extern "C" {
int __cdecl _islower_l(int, _locale_t);
int __cdecl _isupper_l(int, _locale_t);
int __cdecl _isdigit_l(int, _locale_t);
int __cdecl _isxdigit_l(int, _locale_t);
const unsigned short* __cdecl __pctype_func(void);
}
