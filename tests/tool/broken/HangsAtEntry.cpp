// An entry point that waits for something that never comes.

#include <chrono>
#include <thread>

#include "Parts.h"

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    std::this_thread::sleep_for(std::chrono::hours(1));
    return nullptr;
}
