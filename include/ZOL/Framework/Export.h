#pragma once

#include <type_traits>

// ZOL_FRAMEWORK_API marks what crosses the module's boundary; nothing else is exported.
// ZOL_BACKEND_EXPORT marks the one function that a back-end plug-in exports, createBackend.
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

// ZOL_FRAMEWORK_HOT_API is the same for what is called at every message: where the compiler can,
// the call does not go through the linker's table of jumps.
#if defined(__has_attribute) && !defined(_WIN32)
#if __has_attribute(noplt)
#define ZOL_FRAMEWORK_HOT_API ZOL_FRAMEWORK_API __attribute__((noplt))
#endif
#endif
#if !defined(ZOL_FRAMEWORK_HOT_API)
#define ZOL_FRAMEWORK_HOT_API ZOL_FRAMEWORK_API
#endif

// ZOL_FRAMEWORK_NOINLINE gives a module one copy of an inline function in place of one at each
// call, where the copies would cost the compiler most of its time and the calls are next to
// nothing.
#if defined(_MSC_VER)
#define ZOL_FRAMEWORK_NOINLINE __declspec(noinline)
#else
#define ZOL_FRAMEWORK_NOINLINE __attribute__((noinline))
#endif

// What the module was built with, and its users must not do otherwise. Another standard library
// than GNU's or Visual C++'s does not catch the module's exceptions; whoever builds the module and
// all of its users with one and the same other library defines ZOL_FRAMEWORK_OTHER_STANDARD_LIBRARY
// for all of them.
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
