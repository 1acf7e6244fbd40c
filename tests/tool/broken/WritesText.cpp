// Takes the text apart where it lies.

#include <cstring>

#include "Parts.h"

class CuttingChannel : public Channel {
public:
    void log(LoggingLevel, const char* text) override {
        if (char* const space = std::strchr(const_cast<char*>(text), ' ')) {
            *space = '\0';
        }
    }
};

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    return theBackend<BackendWith<CuttingChannel>>();
}
