// One of two modules that know nothing of each other.

#include <string>

#include "ZOL/Framework/Counting/Counter.h"
#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Framework/Export.h"
#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackendLoadError.h"
#include "ZOL/Framework/Management/MemoryManager.h"
#include "ZOL/Framework/Management/PropertyManager.h"
#include "ZOL/Framework/StringHolder.h"

using namespace ZOL::Framework;
using namespace ZOL::Framework::GenericLogger;
using ZOL::Framework::Exceptions::FrameworkException;

namespace {

/// Known to B alone.
class ErrorOfB : public FrameworkException {
public:
    ErrorOfB() : FrameworkException("of a class of B's") {}
};

// Held from before the host does anything.
Logger* const loggerAtLoad = Logger::getLogger("seen by A, B and host");

} // namespace

extern "C" ZOL_BACKEND_EXPORT Logger* loggerOfB() {
    return loggerAtLoad;
}

extern "C" ZOL_BACKEND_EXPORT void logFromB(const char* text) {
    loggerAtLoad->warning() << text;
}

extern "C" ZOL_BACKEND_EXPORT bool isActiveInB(int level) {
    return loggerAtLoad->isLevelActive(static_cast<LoggingLevel>(level));
}

/// Whether B catches, by its own type, what the framework throws.
extern "C" ZOL_BACKEND_EXPORT bool catchesInB(LoggerBackend* installed) {
    try {
        Logger::installBackend(installed);
    } catch (const LoggerBackendLoadError& error) {
        return std::string(error.message()) == "Cannot install a backend twice!";
    }
    return false;
}

extern "C" ZOL_BACKEND_EXPORT void throwFromB() {
    throw LoggerBackendLoadError("thrown in B", "B", 1);
}

extern "C" ZOL_BACKEND_EXPORT int nextFromB(const char* counter) {
    return Counting::Counter::counter(counter).next();
}

extern "C" ZOL_BACKEND_EXPORT void* knownInB(const char* name) {
    return Management::MemoryManager::findObject(name);
}

/// The stored value itself. Throws the framework's exception through B if there is none.
extern "C" ZOL_BACKEND_EXPORT const Management::WideString*
propertyInB(const Management::WideString* name) {
    return &Framework::propertyManager()->readProperty(*name);
}

extern "C" ZOL_BACKEND_EXPORT void* resizedInB(void* block, std::size_t size) {
    return Management::MemoryManager::reallocate(block, size);
}

extern "C" ZOL_BACKEND_EXPORT void freeInB(void* block) {
    Management::MemoryManager::deallocate(block);
}

extern "C" ZOL_BACKEND_EXPORT StringHolder* holderFromB(const char* text) {
    return new StringHolder(text);
}

extern "C" ZOL_BACKEND_EXPORT void deleteInB(StringHolder* holder) {
    delete holder;
}

/// Whether B catches by its root what the framework throws for a property that is not there.
extern "C" ZOL_BACKEND_EXPORT bool catchesMissingPropertyInB(const Management::WideString* name,
                                                             const char* message) {
    try {
        Framework::propertyManager()->clearProperty(*name);
    } catch (const FrameworkException& error) {
        return std::string(error.message()) == message;
    }
    return false;
}

extern "C" ZOL_BACKEND_EXPORT void throwRootFromB() {
    throw FrameworkException("of the root's class");
}

extern "C" ZOL_BACKEND_EXPORT void throwDerivedFromB() {
    throw ErrorOfB();
}
