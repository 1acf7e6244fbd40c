#pragma once

// Wine's header lacks this.

#pragma GCC system_header
#include_next <malloc.h>

extern "C" intptr_t __cdecl _get_heap_handle(void);
