// The channel is gone before it is used.

#include <memory>

#include "Parts.h"

class Backend : public LoggerBackend {
public:
    LoggingChannel* createChannel(const char*) override {
        const auto channel = std::make_unique<Channel>();
        return channel.get(); // NOLINT(clang-analyzer-cplusplus.NewDelete): the fault
    }
};

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    return theBackend<Backend>();
}
