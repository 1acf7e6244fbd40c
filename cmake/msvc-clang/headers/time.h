#pragma once

// Wine's header lacks these, or has some of them, which are renamed. As in Microsoft's header,
// functions that do not check their arguments are deprecated.

#pragma GCC system_header
#define timespec timespec_of_wine
#define gmtime_s gmtime_s_of_wine
#define localtime_s localtime_s_of_wine
#include_next <time.h>
#undef timespec
#undef gmtime_s
#undef localtime_s

struct timespec {
    time_t tv_sec;
    long tv_nsec;
};

extern "C" errno_t __cdecl _gmtime64_s(struct tm*, const __time64_t*);
extern "C" errno_t __cdecl _get_timezone(long*);
extern "C" errno_t __cdecl _get_dstbias(long*);
extern "C" size_t __cdecl _strftime_l(char*, size_t, const char*, const struct tm*, _locale_t);

inline errno_t gmtime_s(struct tm* result, const time_t* time) {
    return _gmtime64_s(result, time);
}

inline errno_t localtime_s(struct tm* result, const time_t* time) {
    return _localtime64_s(result, time);
}

#if !defined(_CRT_SECURE_NO_WARNINGS)
extern "C" {
__declspec(deprecated) char* __cdecl asctime(const struct tm*);
__declspec(deprecated) char* __cdecl ctime(const time_t*);
__declspec(deprecated) struct tm* __cdecl gmtime(const time_t*);
__declspec(deprecated) struct tm* __cdecl localtime(const time_t*);
}
#endif
