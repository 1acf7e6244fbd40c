// The entry point's name has another case.

#include "Parts.h"

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* CreateBackend() {
    return new BackendWith<Channel>;
}
