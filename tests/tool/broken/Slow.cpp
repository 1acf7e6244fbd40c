// Takes its time now and then.

#include <chrono>
#include <thread>

#include "Parts.h"

class SlowChannel : public Channel {
public:
    void log(LoggingLevel, const char*) override {
        constexpr int rarely = 20;
        if (++count_ % rarely == 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(120));
        }
    }

private:
    int count_ = 0;
};

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    return theBackend<BackendWith<SlowChannel>>();
}
