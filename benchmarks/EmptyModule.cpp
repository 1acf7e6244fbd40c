// A module that exports one function. It is built without imports and, on Windows, also with the
// system libraries that the framework imports.

#if defined(EMPTY_WITH_IMPORTS)
#include <windows.h>

#include <shlwapi.h>
#endif

#if defined(_WIN32)
#define EMPTY_EXPORT extern "C" __declspec(dllexport)
#else
#define EMPTY_EXPORT extern "C" __attribute__((visibility("default")))
#endif

EMPTY_EXPORT void benchmarkEmpty();

void benchmarkEmpty() {
#if defined(EMPTY_WITH_IMPORTS)
    RegCloseKey(nullptr);
    PathIsRelativeA("");
#endif
}
