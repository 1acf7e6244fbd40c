#include <cstdio>

#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

class PrintingChannel final : public LoggingChannel {
public:
    void release() override {}
    void log(LoggingLevel level, const char* text) override {
        std::printf("%d %s\n", static_cast<int>(level), text);
    }
};

class PrintingBackend final : public LoggerBackend {
public:
    LoggingChannel* createChannel(const char*) override {
        static PrintingChannel channel;
        return &channel;
    }
};

} // namespace

extern "C" LoggerBackend* createBackend() {
    static auto* const backend = new PrintingBackend;
    return backend;
}
