#include "shared/View.h"

#include "DemoModules.h"
#include "shared/MessageCounts.h"
#include "shared/Properties.h"

using ZOL::Framework::Counting::Counter;
using ZOL::Framework::GenericLogger::Logger;

namespace Demo {

namespace {

/// A counter tells its value only by counting on, so a copy of it does.
CounterView viewOf(const char* name) {
    const Counter& counter = Counter::counter(name);
    Counter& copy = Counter::counter("demo.copy");
    copy = counter;
    return {&counter, copy.next()};
}

} // namespace

View viewOfThisSide() {
    return {Logger::getLogger(readerLoggerName),
            Logger::getLogger(auditorLoggerName),
            viewOf(messageCounterName),
            viewOf(alertCounterName),
            &position(),
            positionsMade(),
            &readProperty(alertLevelProperty),
            &readProperty(lineEndProperty)};
}

} // namespace Demo
