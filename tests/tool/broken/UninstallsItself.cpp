// Has had enough after one message.

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "Parts.h"

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend();

class OneMessageChannel : public Channel {
public:
    void log(LoggingLevel, const char*) override {
        ZOL::Framework::GenericLogger::Logger::uninstallBackend(createBackend());
    }
};

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    return theBackend<BackendWith<OneMessageChannel>>();
}
