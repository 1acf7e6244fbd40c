// Throws something that is no exception, when a logger has an empty name.

#include "Parts.h"

class Backend : public BackendWith<Channel> {
public:
    LoggingChannel* createChannel(const char* name) override {
        return *name != '\0' ? BackendWith<Channel>::createChannel(name) : throw 42;
    }
};

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    return theBackend<Backend>();
}
