// A back end that has its part in all that is shared: whenever it is loaded, it leaves its traces
// in the counter, the object and the properties that all modules have in common.

#include <cstring>
#include <string_view>

#include "ZOL/Framework/Counting/Counter.h"
#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "ZOL/Framework/Management/MemoryManager.h"
#include "ZOL/Framework/Management/PropertyManager.h"

using namespace ZOL::Framework::GenericLogger;
namespace MemoryManager = ZOL::Framework::Management::MemoryManager;
using ZOL::Framework::Framework;
using ZOL::Framework::Counting::Counter;
using ZOL::Framework::Exceptions::FrameworkException;
using ZOL::Framework::Management::WideString;

namespace {

char ownObject[] = "the plug-in's object";
constexpr std::string_view blockText = "the plug-in's block";

class DecliningBackend final : public LoggerBackend {
public:
    LoggingChannel* createChannel(const char*) override { return nullptr; }
};

WideString wide(std::string_view text) {
    return {text.begin(), text.end()};
}

/// Answers the host's question, or tells which exception it caught for want of one.
void answer() {
    try {
        const WideString& question =
            Framework::propertyManager()->readProperty(wide("Sharing.question"));
        Framework::propertyManager()->setProperty(wide("Sharing.answer"),
                                                  question + wide(" Answered."));
    } catch (const FrameworkException& error) {
        Framework::propertyManager()->setProperty(wide("Sharing.answer"), wide(error.message()));
    }
}

/// Frees the block that the host left, and leaves one of its own.
void exchangeBlocks() {
    auto* const exchanged = static_cast<void**>(MemoryManager::findObject("Sharing.block"));
    if (exchanged != nullptr) {
        MemoryManager::deallocate(*exchanged);
        *exchanged = MemoryManager::allocate(blockText.size() + 1);
        std::memcpy(*exchanged, blockText.data(), blockText.size() + 1);
    }
}

} // namespace

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    static DecliningBackend backend;
    Counter::counter("Sharing.counter").next();
    MemoryManager::registerObject("Sharing.object", [] { return static_cast<void*>(ownObject); });
    answer();
    exchangeBlocks();
    return &backend;
}
