#include "Shared.h"

#include "ZOL/Framework/Counting/Counter.h"
#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/Management/MemoryManager.h"
#include "ZOL/Framework/Management/PropertyManager.h"

namespace MemoryManager = ZOL::Framework::Management::MemoryManager;
using namespace ZOL::Framework::GenericLogger;
using ZOL::Framework::Framework;
using ZOL::Framework::Counting::Counter;
using ZOL::Framework::Management::WideString;

namespace TwoModules {

namespace {

int positionsMade = 0; // one variable in each module

void* makePosition() {
    static Position position;
    ++positionsMade;
    return &position;
}

WideString wide(std::string_view ascii) {
    return {ascii.begin(), ascii.end()};
}

const WideString& storedProperty(const char* name) {
    return Framework::propertyManager()->readProperty(wide(name));
}

/// Only next() returns a counter's value, so this counts a copy up.
int valueOf(const Counter& counter) {
    Counter& copy = Counter::counter("example.copy");
    copy = counter;
    return copy.next();
}

} // namespace

Position& position() {
    return *static_cast<Position*>(MemoryManager::registerObject("example.position", makePosition));
}

LogStream message(const char* logger, LoggingLevel level) {
    Counter::counter(messageCounter).next();
    if (level >= LOG_LEVEL_WARNING) {
        Counter::counter(alertCounter).next();
    }
    return Logger::getLogger(logger)->log(level);
}

void setProperty(const char* name, std::string_view value) {
    Framework::propertyManager()->setProperty(wide(name), wide(value));
}

std::string readProperty(const char* name) {
    std::string value;
    for (const auto unit : storedProperty(name)) {
        value += static_cast<char>(unit);
    }
    return value;
}

View viewOfThisModule() {
    const Counter& messages = Counter::counter(messageCounter);
    const Counter& alerts = Counter::counter(alertCounter);
    return {Logger::getLogger(readerLogger),
            Logger::getLogger(auditorLogger),
            &messages,
            valueOf(messages),
            &alerts,
            valueOf(alerts),
            &position(),
            positionsMade,
            &storedProperty(alertWordProperty),
            &storedProperty(lineEndProperty),
            reinterpret_cast<const void*>(&MemoryManager::allocate)};
}

} // namespace TwoModules
