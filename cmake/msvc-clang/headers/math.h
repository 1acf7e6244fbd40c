#pragma once

// Wine's header has the classification of floating-point numbers as macros, or as functions of
// which some are missing, and lacks functions of long double. A C++ library expects the functions
// of Microsoft's header.

#pragma GCC system_header
#define isfinite isfinite_of_wine
#define isinf isinf_of_wine
#define isnan isnan_of_wine
#define isnormal isnormal_of_wine
#include_next <math.h>
#undef isfinite
#undef isinf
#undef isnan
#undef isnormal

template <typename Number>
bool isfinite(Number number) noexcept {
    return __builtin_isfinite(number);
}

template <typename Number>
bool isinf(Number number) noexcept {
    return __builtin_isinf(number);
}

template <typename Number>
bool isnan(Number number) noexcept {
    return __builtin_isnan(number);
}

template <typename Number>
bool isnormal(Number number) noexcept {
    return __builtin_isnormal(number);
}

inline long double atan2l(long double y, long double x) {
    return atan2(y, x);
}
