// Calls a function of another library; the build decides how that is linked.

#include "Parts.h"

extern "C" int helpWithBackend();

class HelpedChannel : public Channel {
public:
    void log(LoggingLevel, const char* text) override {
        if (*text == '\x7F') {
            helpWithBackend();
        }
    }
};

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    return theBackend<BackendWith<HelpedChannel>>();
}
