#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "ZOL/Framework/Management/MemoryManager.h"

#include "../far/FarSide.h"
#include "Discarded.h"

using namespace ZOL::Framework::GenericLogger;
namespace MemoryManager = ZOL::Framework::Management::MemoryManager;

namespace {

/// Forgets the texts.
class DiscardingChannel final : public LoggingChannel {
public:
    void release() override {}
    void log(LoggingLevel, const char* text) override { farSide.take(text); }

    benchmarks::FarSide farSide;
};

class DiscardingBackend final : public LoggerBackend {
public:
    DiscardingBackend() { MemoryManager::registerObject(benchmarks::discardedName, &farSide); }
    LoggingChannel* createChannel(const char*) override { return &channel(); }

private:
    static DiscardingChannel& channel() {
        static DiscardingChannel channel;
        return channel;
    }
    static void* farSide() { return &channel().farSide; }
};

} // namespace

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    static DiscardingBackend backend;
    return &backend;
}
