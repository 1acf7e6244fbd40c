// Destroys its channel when the process ends, while loggers still use it.

#include <memory>

#include "Parts.h"

class Backend : public LoggerBackend {
public:
    LoggingChannel* createChannel(const char*) override { return channel_.get(); }

private:
    std::unique_ptr<Channel> channel_ = std::make_unique<Channel>();
};

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    static Backend backend;
    return &backend;
}
