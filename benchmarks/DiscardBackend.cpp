#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "ZOL/Framework/Management/MemoryManager.h"

#include "ByteCounter.h"

using namespace ZOL::Framework::GenericLogger;
namespace MemoryManager = ZOL::Framework::Management::MemoryManager;

namespace {

class DiscardChannel final : public LoggingChannel {
public:
    void release() override {}
    void log(LoggingLevel, const char* text) override { counter.add(text); }

    benchmarks::ByteCounter counter;
};

class DiscardBackend final : public LoggerBackend {
public:
    DiscardBackend() { MemoryManager::registerObject(benchmarks::discardCounterName, &counter); }
    LoggingChannel* createChannel(const char*) override { return &channel(); }

private:
    static DiscardChannel& channel() {
        static DiscardChannel channel;
        return channel;
    }
    static void* counter() { return &channel().counter; }
};

} // namespace

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    static DiscardBackend backend;
    return &backend;
}
