// extern "C" is missing.

#include "Parts.h"

ZOL_BACKEND_EXPORT LoggerBackend* createBackend();

LoggerBackend* createBackend() {
    return new BackendWith<Channel>;
}
