#pragma once

// Wine's header lacks these two of the functions that take a locale.

#pragma GCC system_header
#include_next <ctype.h>

extern "C" {
int __cdecl _islower_l(int, _locale_t);
int __cdecl _isupper_l(int, _locale_t);
}
