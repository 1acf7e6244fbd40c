// A back end that does everything right, and the same object at every load. It serves the loggers
// whose names begin with "Good", and counts their messages for all to see.

#include <string>

#include "ZOL/Framework/Counting/Counter.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

using namespace ZOL::Framework::GenericLogger;
using ZOL::Framework::Counting::Counter;

namespace {

class CountingChannel final : public LoggingChannel {
public:
    void release() override {}
    void log(LoggingLevel, const char*) override { Counter::counter("Good.messages").next(); }
};

class GoodBackend final : public LoggerBackend {
public:
    LoggingChannel* createChannel(const char* name) override {
        static CountingChannel channel;
        return std::string(name).rfind("Good", 0) == 0 ? &channel : nullptr;
    }
};

} // namespace

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    static GoodBackend backend;
    return &backend;
}
