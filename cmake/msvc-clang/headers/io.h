#pragma once

// Wine's header has a macro for this function, Microsoft's has the function.

#pragma GCC system_header
#include_next <io.h>

#undef open
extern "C" int open(const char* path, int flags, ...);
