// Tells of each message that it has written it.

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "Parts.h"

class TalkingChannel : public Channel {
public:
    void log(LoggingLevel, const char*) override {
        ZOL::Framework::GenericLogger::Logger::getLogger("talking")->info("one message written");
    }
};

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    return theBackend<BackendWith<TalkingChannel>>();
}
