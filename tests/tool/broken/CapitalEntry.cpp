// The entry point's name is not quite right.

#include "Parts.h"

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* CreateBackend() {
    return new BackendWith<Channel>;
}
