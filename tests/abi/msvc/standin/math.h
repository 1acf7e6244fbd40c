#pragma once

// Wine's header has the classification of floating-point numbers as macros. Microsoft's has
// functions, which is what a C++ library finds there.

#pragma GCC system_header
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
