// The entry point is there for the linker, but not for the loader.

#include "Parts.h"

extern "C" LoggerBackend* createBackend();

extern "C" LoggerBackend* createBackend() {
    return new BackendWith<Channel>;
}
