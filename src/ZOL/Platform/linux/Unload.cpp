#include "ZOL/Platform/Unload.h"

// The call behind atexit and behind static objects, by the C++ ABI. The thread sanitizer's own
// atexit forgets whose function it is, and calls it at the end of the process, when the module may
// be gone.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
extern void* __dso_handle;
int __cxa_atexit(void (*function)(void*), void* argument, void* module);
}
// NOLINTEND(bugprone-reserved-identifier)

namespace ZOL::Platform {

void atUnload(void (*function)()) {
    __cxa_atexit([](void* argument) { reinterpret_cast<void (*)()>(argument)(); },
                 reinterpret_cast<void*>(function), &__dso_handle);
}

} // namespace ZOL::Platform
