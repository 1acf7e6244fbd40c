#pragma once

// What every header of ZOL needs from the compiler. Visual C++ does not say in __cplusplus which
// standard is in use, but in _MSVC_LANG.
#if defined(_MSVC_LANG)
#define ZOL_DETAIL_STANDARD _MSVC_LANG
#else
#define ZOL_DETAIL_STANDARD __cplusplus
#endif
#if ZOL_DETAIL_STANDARD < 201703L
#error "ZOL needs C++17 or later: compile with -std=c++17 (Visual C++: /std:c++17)"
#endif
#undef ZOL_DETAIL_STANDARD

#if !defined(__cpp_exceptions) && !defined(_CPPUNWIND)
#error "ZOL needs exceptions: compile without -fno-exceptions (Visual C++: with /EHsc)"
#endif
