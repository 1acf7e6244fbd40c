#pragma once

// Wine's header lacks the variant that checks its argument.

#pragma GCC system_header
#include_next <sys/timeb.h>

extern "C" int __cdecl _ftime64_s(__timeb64*);
