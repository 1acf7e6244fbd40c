// A pointer to the entry point in place of the entry point.

#include "Parts.h"

static LoggerBackend* create() {
    return new BackendWith<Channel>;
}

extern "C" {
ZOL_BACKEND_EXPORT LoggerBackend* (*createBackend)() = &create;
}
