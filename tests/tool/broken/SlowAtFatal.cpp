// Takes its time for the worst.

#include <chrono>
#include <thread>

#include "Parts.h"

class SlowChannel : public Channel {
public:
    void log(LoggingLevel level, const char*) override {
        if (level == ZOL::Framework::GenericLogger::LOG_LEVEL_FATAL) {
            std::this_thread::sleep_for(std::chrono::milliseconds(120));
        }
    }
};

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    return theBackend<BackendWith<SlowChannel>>();
}
