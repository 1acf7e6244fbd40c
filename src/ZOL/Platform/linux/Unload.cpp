#include "ZOL/Platform/Unload.h"

// __cxa_atexit is the function of the C++ ABI that atexit and static objects use. The thread
// sanitizer's replacement of atexit does not record the module, and calls the function when the
// process ends, possibly after the module has been unloaded.
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
