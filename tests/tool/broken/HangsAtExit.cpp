// Its end waits for something that never comes.

#include <chrono>
#include <thread>

#include "Parts.h"

struct Waiting {
    ~Waiting() { std::this_thread::sleep_for(std::chrono::hours(1)); }
};
Waiting waiting;

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    return theBackend<BackendWith<Channel>>();
}
