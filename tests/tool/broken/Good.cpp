// Nothing is wrong with this one.

#include "Parts.h"

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    return theBackend<BackendWith<Channel>>();
}
