// Does not wait for the host's own last words.

#include <cstdlib>

#include "Parts.h"

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    static const int registered = std::atexit([] { std::_Exit(0); });
    return registered == 0 ? theBackend<BackendWith<Channel>>() : nullptr;
}
