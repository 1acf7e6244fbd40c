// Lets an exception out for an empty text.

#include <stdexcept>

#include "Parts.h"

class PickyChannel : public Channel {
public:
    void log(LoggingLevel, const char* text) override {
        if (*text == '\0') {
            throw std::invalid_argument("nothing to write");
        }
    }
};

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    return theBackend<BackendWith<PickyChannel>>();
}
