// Looks the level up in a table without a look at the level.

#include <array>

#include "Parts.h"

const std::array<const char*, 7> names = {"none", "trace", "debug", "info",
                                          "warn", "error", "fatal"};

class TableChannel : public Channel {
public:
    void log(LoggingLevel level, const char*) override { initial_ = names.data()[level / 10][0]; }

private:
    volatile char initial_ = 0;
};

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    return theBackend<BackendWith<TableChannel>>();
}
