// A module that uses the framework at every moment of its own life and of its threads' lives.

#include <cstdlib>

#include "EveryService.h"
#include "ThreadEnd.h"

#include "ZOL/Framework/Export.h"

#if defined(__SANITIZE_THREAD__)
// The thread sanitizer's own atexit forgets whose function it is, and calls it when the module has
// gone. What the C library's does in a module is this.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
extern void* __dso_handle;
int __cxa_atexit(void (*function)(void*), void* argument, void* module);
}
// NOLINTEND(bugprone-reserved-identifier)
#endif

namespace {

void atExit(void (*function)()) {
#if defined(__SANITIZE_THREAD__)
    __cxa_atexit([](void* argument) { reinterpret_cast<void (*)()>(argument)(); },
                 reinterpret_cast<void*>(function), &__dso_handle);
#else
    std::atexit(function);
#endif
}

class Life {
public:
    Life() {
        useEveryService("static initialiser");
        atExit([] { useEveryService("atexit handler"); });
    }
    Life(const Life&) = delete;
    Life& operator=(const Life&) = delete;
    ~Life() {
        useEveryService("static destructor");
        forgetThreadEnds();
    }
};

const Life life;

} // namespace

extern "C" ZOL_BACKEND_EXPORT void use(const char* moment) {
    useEveryService(moment);
}

extern "C" ZOL_BACKEND_EXPORT void useAtThreadEnd() {
    atThreadEnd(useEveryService);
}
