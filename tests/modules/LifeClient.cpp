// What a process that loads and unloads the framework does with it. The framework comes with this
// module and goes with it.

#include <cstring>

#include "ZOL/Framework/Counting/Counter.h"
#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Framework/Export.h"
#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "ZOL/Framework/GenericLogger/LoggerBackendLoadError.h"
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

/// Tells of every call on it.
class WatchedChannel final : public LoggingChannel {
public:
    explicit WatchedChannel(void (*witness)(const char*)) : witness_(witness) {}
    ~WatchedChannel() override { witness_("channel destroyed"); }

    void release() override { witness_("channel released"); }
    void log(LoggingLevel, const char* text) override { witness_(text); }

private:
    void (*witness_)(const char*);
};

/// Tells of every call on it, and opens a channel of its own for each logger.
class WatchedBackend final : public LoggerBackend {
public:
    explicit WatchedBackend(void (*witness)(const char*)) : witness_(witness) {}
    ~WatchedBackend() override { witness_("back end destroyed"); }

    LoggingChannel* createChannel(const char* name) override {
        witness_(name);
        return new WatchedChannel(witness_);
    }

private:
    void (*witness_)(const char*);
};

WatchedBackend* watchedBackend = nullptr;

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

extern "C" ZOL_BACKEND_EXPORT void uninstall() {
    Logger::uninstallBackend(&backend);
    Logger::uninstallBackend(watchedBackend);
}

/// The back end and its channels are nobody's, and outlive this module.
extern "C" ZOL_BACKEND_EXPORT void installWatched(void (*witness)(const char*)) {
    watchedBackend = new WatchedBackend(witness);
    Logger::installBackend(watchedBackend);
}

/// Whether the framework's exception for that comes here, whole.
extern "C" ZOL_BACKEND_EXPORT bool refusesNoBackend() {
    try {
        Logger::installBackend(static_cast<LoggerBackend*>(nullptr));
    } catch (const LoggerBackendLoadError& error) {
        return std::strcmp(error.message(), "Cannot install a NULL backend!") == 0 &&
               std::strstr(error.what(), error.message()) != nullptr;
    }
    return false;
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

/// Whether a block keeps what it holds when its size changes.
extern "C" ZOL_BACKEND_EXPORT bool resize() {
    namespace MemoryManager = Management::MemoryManager;
    void* const block = MemoryManager::allocate(100);
    std::memset(block, 'x', 100);
    auto* const resized = static_cast<const char*>(MemoryManager::reallocate(block, 100000));
    const bool kept = resized[0] == 'x' && resized[99] == 'x';
    MemoryManager::deallocate(const_cast<char*>(resized));
    return kept;
}
