#pragma once

#include <type_traits>

#include "ZOL/Requirements.h"

// ZOL_FRAMEWORK_API marks what the module exports; nothing else is exported. ZOL_BACKEND_EXPORT
// marks createBackend, the only function that a back-end plug-in exports.
#if defined(_WIN32)
#if defined(ZOL_FRAMEWORK_BUILD)
#define ZOL_FRAMEWORK_API __declspec(dllexport)
#else
#define ZOL_FRAMEWORK_API __declspec(dllimport)
#endif
#define ZOL_BACKEND_EXPORT __declspec(dllexport)
#else
#define ZOL_FRAMEWORK_API __attribute__((visibility("default")))
#define ZOL_BACKEND_EXPORT __attribute__((visibility("default")))
#endif

// ZOL_FRAMEWORK_HOT_API is ZOL_FRAMEWORK_API for functions that are called for every message. If
// the compiler supports it, these calls bypass the procedure linkage table (PLT).
#if defined(__has_attribute) && !defined(_WIN32)
#if __has_attribute(noplt)
#define ZOL_FRAMEWORK_HOT_API ZOL_FRAMEWORK_API __attribute__((noplt))
#endif
#endif
#if !defined(ZOL_FRAMEWORK_HOT_API)
#define ZOL_FRAMEWORK_HOT_API ZOL_FRAMEWORK_API
#endif

// ZOL_FRAMEWORK_NOINLINE makes a module contain one copy of an inline function instead of one per
// call. It is used where the copies would dominate the compile time and the call costs little.
#if defined(_MSC_VER)
#define ZOL_FRAMEWORK_NOINLINE __declspec(noinline)
#else
#define ZOL_FRAMEWORK_NOINLINE __attribute__((noinline))
#endif

// ZOL_FRAMEWORK_HIDDEN keeps what a header defines inside the module that includes it. On Linux, a
// static object of an inline function or template would otherwise be shared by modules, and keep
// them from being unloaded.
#if defined(_WIN32)
#define ZOL_FRAMEWORK_HIDDEN
#else
#define ZOL_FRAMEWORK_HIDDEN __attribute__((visibility("hidden")))
#endif

// The module's users must be built with the same settings as the module. With a standard library
// other than GNU's or Visual C++'s they cannot catch its exceptions. If the module and all of its
// users are built with one such library, define ZOL_FRAMEWORK_OTHER_STANDARD_LIBRARY for all of
// them.
#if !defined(__GLIBCXX__) && !defined(_MSVC_STL_VERSION) &&                                        \
    !defined(ZOL_FRAMEWORK_OTHER_STANDARD_LIBRARY)
#error "ZOL Framework needs the standard library that its module has"
#endif
#if defined(_WIN32)
static_assert(sizeof(wchar_t) == 2, "the framework's texts need the platform's own wchar_t");
#if defined(_MSC_VER)
static_assert(std::is_same_v<void(), void __cdecl()>,
              "the framework's functions are __cdecl: compile its headers with that default");
#endif
#else
static_assert(sizeof(wchar_t) == 4, "the framework's texts need the platform's own wchar_t");
#endif
