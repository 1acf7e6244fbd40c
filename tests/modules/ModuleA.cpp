// One of two modules that know nothing of each other.

#include <cstring>

#include "ZOL/Framework/Counting/Counter.h"
#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Framework/Export.h"
#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/Management/MemoryManager.h"
#include "ZOL/Framework/Management/PropertyManager.h"
#include "ZOL/Framework/StringHolder.h"

using namespace ZOL::Framework;
using namespace ZOL::Framework::GenericLogger;
using ZOL::Framework::Exceptions::FrameworkException;

namespace {

int objectOfA = 0;

} // namespace

extern "C" ZOL_BACKEND_EXPORT Logger* loggerOfA(const char* name) {
    return Logger::getLogger(name);
}

extern "C" ZOL_BACKEND_EXPORT void logFromA(const char* name, const char* text) {
    Logger::getLogger(name)->info() << text;
}

extern "C" ZOL_BACKEND_EXPORT void setMinimumFromA(const char* name, int level) {
    Logger::getLogger(name)->minLogLevel(static_cast<LoggingLevel>(level));
}

extern "C" ZOL_BACKEND_EXPORT void installFromA(LoggerBackend* backend) {
    Logger::installBackend(backend);
}

extern "C" ZOL_BACKEND_EXPORT int nextFromA(const char* counter) {
    return Counting::Counter::counter(counter).next();
}

extern "C" ZOL_BACKEND_EXPORT void* objectFromA(const char* name) {
    return Management::MemoryManager::registerObject(name,
                                                     [] { return static_cast<void*>(&objectOfA); });
}

extern "C" ZOL_BACKEND_EXPORT void setPropertyFromA(const Management::WideString* name,
                                                    const Management::WideString* value) {
    Framework::propertyManager()->setProperty(*name, *value);
}

extern "C" ZOL_BACKEND_EXPORT void* blockFromA(std::size_t size) {
    return Management::MemoryManager::allocate(size);
}

extern "C" ZOL_BACKEND_EXPORT void freeInA(void* block) {
    Management::MemoryManager::deallocate(block);
}

extern "C" ZOL_BACKEND_EXPORT void appendInA(StringHolder* holder, const char* text) {
    *holder += text;
}

/// Whether A catches what the callee throws by its root, with that message.
extern "C" ZOL_BACKEND_EXPORT bool catchesByRootInA(void (*callee)(), const char* message) {
    try {
        callee();
    } catch (const FrameworkException& error) {
        return std::strcmp(error.message(), message) == 0;
    }
    return false;
}
