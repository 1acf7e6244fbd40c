#include "EveryService.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "CountingBackend.h"
#include "WideText.h"

#include "ZOL/Framework/Counting/Counter.h"
#include "ZOL/Framework/CrisisLogging/CrisisLogger.h"
#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackendLoadError.h"
#include "ZOL/Framework/Management/MemoryManager.h"
#include "ZOL/Framework/Management/PropertyManager.h"
#include "ZOL/Framework/StringHolder.h"

using namespace ZOL::Framework;
using namespace ZOL::Framework::GenericLogger;
using ZOL::Framework::Counting::Counter;
using ZOL::Framework::CrisisLogging::CrisisLogger;
using ZOL::Framework::Exceptions::FrameworkException;
using ZOL::Framework::Management::PropertyManager;
using ZOL::Framework::Management::WideString;
namespace MemoryManager = ZOL::Framework::Management::MemoryManager;

namespace {

const char* currentMoment = nullptr;

void require(bool done, const char* what) {
    if (!done) {
        std::fprintf(stderr, "%s: %s\n", currentMoment, what);
        std::_Exit(1);
    }
}

void useLogger() {
    Logger* const logger = Logger::getLogger(currentMoment);
    require(logger == Logger::getLogger(currentMoment), "not the same logger twice");
    require(logger->isLevelActive(LOG_LEVEL_ERROR), "no logging of errors");
    logger->minLogLevel(LOG_LEVEL_FATAL);
    require(!logger->isLevelActive(LOG_LEVEL_ERROR), "no minimum level");
    logger->info() << "cached " << 1;

    // Never destroyed: loggers keep its channel when it has been uninstalled.
    auto* const backend = new support::CountingBackend;
    backend->prefix = currentMoment;
    Logger::installBackend(backend);
    require(backend->logged() == 1 && std::strcmp(backend->lastText(), "cached 1") == 0,
            "the cache was not delivered");
    logger->info() << "live " << 2;
    require(backend->logged() == 2 && std::strcmp(backend->lastText(), "live 2") == 0,
            "a message was not delivered");
    try {
        Logger::installBackend(backend);
        require(false, "a back end was installed twice");
    } catch (const LoggerBackendLoadError& error) {
        require(std::strstr(error.what(), error.message()) != nullptr,
                "not the logger's exception");
    }
    Logger::uninstallBackend(backend);
    logger->info() << "cached again";
    require(backend->logged() == 2, "a back end that has left got a message");
}

void useCounter() {
    Counter& counter = Counter::counter(currentMoment);
    require(counter.next() == 0 && Counter::counter(currentMoment).next() == 1, "no counting");
    counter.reset();
    require(counter.next() == 0, "no reset of a counter");
}

void useObjects() {
    static int object = 0;
    require(MemoryManager::findObject(currentMoment) == nullptr, "an object from nowhere");
    require(MemoryManager::registerObject(currentMoment,
                                          [] { return static_cast<void*>(&object); }) == &object,
            "an object was not registered");
    require(MemoryManager::findObject(currentMoment) == &object, "an object was not found");
}

void useProperties() {
    const WideString name = support::wide(currentMoment);
    const WideString value = support::wide("a value that is longer than a short string");
    PropertyManager& store = *Framework::propertyManager();
    require(!store.hasProperty(name), "a property from nowhere");
    store.setProperty(name, value);
    require(store.readProperty(name) == value, "no property");
    store.clearProperty(name);
    try {
        store.readProperty(name);
        require(false, "a property that was cleared");
    } catch (const FrameworkException& error) {
        require(std::strstr(error.message(), currentMoment) != nullptr,
                "not the store's exception");
    }
    store.setProperty(name, value); // for the unload to find
}

void useTheRest() {
    StringHolder text(currentMoment);
    text += " and more";
    require(text.c_str() == std::string(currentMoment) + " and more", "no text");

    auto* const block = static_cast<char*>(MemoryManager::allocate(10));
    std::memset(block, 'x', 10);
    auto* const resized = static_cast<char*>(MemoryManager::reallocate(block, 10000));
    require(std::string(resized, 10) == "xxxxxxxxxx", "a block lost what it held");
    MemoryManager::deallocate(resized);

    int largest = 0;
    for (int draw = 0; draw < 100; ++draw) {
        const int number = Framework::randomNumber();
        largest = number > largest ? number : largest;
    }
    require(largest > 1000, "no random numbers");
}

} // namespace

void useEveryService(const char* moment) {
    currentMoment = moment;
    useLogger();
    useCounter();
    useObjects();
    useProperties();
    useTheRest();
    CrisisLogger::instance().log(moment);
}
