// Takes a fatal message for the end.

#include <cstdlib>

#include "Parts.h"

class FatalChannel : public Channel {
public:
    void log(LoggingLevel level, const char*) override {
        if (level == ZOL::Framework::GenericLogger::LOG_LEVEL_FATAL) {
            std::exit(0);
        }
    }
};

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    return theBackend<BackendWith<FatalChannel>>();
}
