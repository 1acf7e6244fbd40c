// Throws for every logger.

#include <stdexcept>

#include "Parts.h"

class Backend : public LoggerBackend {
public:
    LoggingChannel* createChannel(const char*) override {
        throw std::runtime_error("the disk is gone");
    }
};

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    return theBackend<Backend>();
}
