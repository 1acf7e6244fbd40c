#pragma once

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
