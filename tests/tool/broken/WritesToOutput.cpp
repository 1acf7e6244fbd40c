// Writes where the host's results go.

#include <cstdio>

#include "Parts.h"

class PrintingChannel : public Channel {
public:
    void log(LoggingLevel, const char* text) override { std::puts(text); }
};

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    return theBackend<BackendWith<PrintingChannel>>();
}
