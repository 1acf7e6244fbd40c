// A static initialiser that throws.

#include <stdexcept>

#include "Parts.h"

static int readSettings() {
    throw std::runtime_error("there are no settings");
}

const int settings = readSettings();

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    return theBackend<BackendWith<Channel>>();
}
