#pragma once

// Wine's header defines this function, which clang has built in: its definition is moved aside.

#pragma GCC system_header
#define _InterlockedCompareExchange128 _InterlockedCompareExchange128_of_wine
#include_next <winnt.h>
#undef _InterlockedCompareExchange128
