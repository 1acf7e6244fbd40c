// Interposes abi::__cxa_demangle of the C++ runtime.

#include "FailingDemangler.h"

#include <cstddef>

#include <dlfcn.h>

namespace support {

static bool demanglingFails = false;

void failDemangling(bool fails) {
    demanglingFails = fails;
}

} // namespace support

// NOLINTNEXTLINE(bugprone-reserved-identifier): it has to be that very name
extern "C" [[gnu::visibility("default")]] char* __cxa_demangle(const char* name, char* buffer,
                                                               std::size_t* size, int* status) {
    using Function = char*(const char*, char*, std::size_t*, int*);
    static auto* const next = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, "__cxa_demangle"));
    if (!support::demanglingFails) {
        return next(name, buffer, size, status);
    }
    constexpr int noMemory = -1;
    *status = noMemory;
    return nullptr;
}
