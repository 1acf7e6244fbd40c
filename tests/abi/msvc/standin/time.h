#pragma once

// Wine's header lacks these.

#pragma GCC system_header
#include_next <time.h>

struct timespec {
    time_t tv_sec;
    long tv_nsec;
};

extern "C" errno_t __cdecl _gmtime64_s(struct tm*, const __time64_t*);
extern "C" errno_t __cdecl _get_timezone(long*);
extern "C" errno_t __cdecl _get_dstbias(long*);

inline errno_t gmtime_s(struct tm* result, const time_t* time) {
    return _gmtime64_s(result, time);
}

inline errno_t localtime_s(struct tm* result, const time_t* time) {
    return _localtime64_s(result, time);
}
