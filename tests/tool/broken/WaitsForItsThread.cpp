// Hands each message to a thread, waits for that, and the thread logs.

#include <thread>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "Parts.h"

class WaitingChannel : public Channel {
public:
    void log(LoggingLevel, const char*) override {
        std::thread([] {
            ZOL::Framework::GenericLogger::Logger::getLogger("worker")->info("written");
        }).join();
    }
};

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    return theBackend<BackendWith<WaitingChannel>>();
}
