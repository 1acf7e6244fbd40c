// What a process that loads and unloads the framework does with it. The framework comes with this
// module and goes with it.

#include <cstring>

#include "ZOL/Framework/Counting/Counter.h"
#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Framework/Export.h"
#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "ZOL/Framework/Management/MemoryManager.h"
#include "ZOL/Framework/Management/PropertyManager.h"
#include "ZOL/Framework/StringHolder.h"

using namespace ZOL::Framework;
using namespace ZOL::Framework::GenericLogger;

namespace {

void (*onLog)() = nullptr;
int released = 0;

class Channel final : public LoggingChannel {
public:
    void release() override { ++released; }
    void log(LoggingLevel, const char*) override {
        if (onLog != nullptr) {
            onLog();
        }
    }
};

class Backend final : public LoggerBackend {
public:
    LoggingChannel* createChannel(const char*) override { return &channel_; }

private:
    Channel channel_;
};

Backend backend;

} // namespace

extern "C" ZOL_BACKEND_EXPORT int nextOf(const char* counter) {
    return Counting::Counter::counter(counter).next();
}

extern "C" ZOL_BACKEND_EXPORT void* objectOf(const char* name, void* (*factory)()) {
    return Management::MemoryManager::registerObject(name, factory);
}

extern "C" ZOL_BACKEND_EXPORT void* knownObject(const char* name) {
    return Management::MemoryManager::findObject(name);
}

extern "C" ZOL_BACKEND_EXPORT void makeLogger(const char* name) {
    Logger::getLogger(name);
}

extern "C" ZOL_BACKEND_EXPORT void logTo(const char* name, const char* text) {
    Logger::getLogger(name)->info() << text;
}

extern "C" ZOL_BACKEND_EXPORT void install() {
    Logger::installBackend(&backend);
}

extern "C" ZOL_BACKEND_EXPORT void callOnLog(void (*callee)()) {
    onLog = callee;
}

extern "C" ZOL_BACKEND_EXPORT int drawn() {
    return Framework::randomNumber();
}

extern "C" ZOL_BACKEND_EXPORT Management::PropertyManager* properties() {
    return Framework::propertyManager();
}

/// Whether reading that property fails with the framework's exception.
extern "C" ZOL_BACKEND_EXPORT bool failsToRead(const Management::WideString* name) {
    try {
        Framework::propertyManager()->readProperty(*name);
    } catch (const Exceptions::FrameworkException& error) {
        Exceptions::FrameworkException copy;
        copy = error;
        return std::strstr(copy.message(), "unexistent property") != nullptr;
    }
    return false;
}

/// Whether the two texts make the third, in holders that come and go.
extern "C" ZOL_BACKEND_EXPORT bool join(const char* first, const char* second, const char* joined) {
    const StringHolder begin(first);
    StringHolder whole(begin);
    whole += second;
    StringHolder assigned;
    assigned = whole;
    return std::strcmp(assigned.c_str(), joined) == 0;
}
