// A module with nothing in it but the proof that it has been loaded, once alone and once with the
// system libraries that the framework brings along on Windows.

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
