// Nothing is wrong with this one, unless the build defines one of the faults below.

#include <stdexcept>

#include "Parts.h"

static LoggerBackend* create() {
    return theBackend<BackendWith<Channel>>();
}

#if defined(MangledEntry) // extern "C" is missing
ZOL_BACKEND_EXPORT LoggerBackend* createBackend();
LoggerBackend* createBackend() {
    return create();
}
#elif defined(CapitalEntry)
extern "C" ZOL_BACKEND_EXPORT LoggerBackend* CreateBackend() {
    return create();
}
#elif defined(HiddenEntry) // not exported
extern "C" LoggerBackend* createBackend();
extern "C" LoggerBackend* createBackend() {
    return create();
}
#elif defined(DataEntry)   // a pointer to the function
extern "C" {
ZOL_BACKEND_EXPORT LoggerBackend* (*createBackend)() = &create;
}
#else
extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    return create();
}
#endif

#if defined(CrashesAtLoad)
volatile int* volatile nowhere = nullptr;
const int atLoad = *nowhere;
#elif defined(ThrowsAtLoad)
const int atLoad = []() -> int {
    throw std::runtime_error("there are no settings");
}();
#endif
