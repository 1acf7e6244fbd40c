// A new back end at each load.

#include "Parts.h"

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    return new BackendWith<Channel>;
}
