// The entry point is defined, but not exported.

#include "Parts.h"

extern "C" LoggerBackend* createBackend();

extern "C" LoggerBackend* createBackend() {
    return new BackendWith<Channel>;
}
