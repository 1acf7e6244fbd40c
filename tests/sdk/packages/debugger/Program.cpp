#include "ZOL/Framework/Counting/Counter.h"
#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerException.h"
#include "ZOL/Framework/StringHolder.h"

using namespace ZOL::Framework;

int main() {
    const StringHolder text("some text");
    const Exceptions::FrameworkException failure("some failure");
    const GenericLogger::LoggerException logFailure("some loss", "Some.cpp", 42);
    GenericLogger::Logger& logger = *GenericLogger::Logger::getLogger("some logger");
    logger.info("waiting");
    Counting::Counter& counter = Counting::Counter::counter("some counter");
    counter.next();
    counter.reset(); // the debugger stops here
    return text.c_str() == nullptr || failure.message() == nullptr ||
           logFailure.filename() == nullptr;
}
