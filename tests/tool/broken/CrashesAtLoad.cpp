// A static initialiser that crashes.

#include "Parts.h"

volatile int* volatile nowhere = nullptr;
const int atLoad = *nowhere;

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    return theBackend<BackendWith<Channel>>();
}
