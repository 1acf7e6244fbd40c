// Sizes and numbers that are compiled into every module that uses the framework.

#include <string>
#include <typeinfo>
#include <vector>

#include "Goldens.h"
#include "ModuleExports.h"

#include "ZOL/Framework/Counting/Counter.h"
#include "ZOL/Framework/CrisisLogging/CrisisLogger.h"
#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "ZOL/Framework/GenericLogger/LoggerBackendLoadError.h"
#include "ZOL/Framework/Management/PropertyManager.h"
#include "ZOL/Framework/StringHolder.h"

using surface::readable;
using namespace ZOL::Framework;
using namespace ZOL::Framework::GenericLogger;

namespace {

template <typename Type>
std::string layoutOf() {
    return readable(typeid(Type).name()) + ": " + std::to_string(sizeof(Type)) +
           " bytes, aligned to " + std::to_string(alignof(Type));
}

std::string line(const char* name, LoggingLevel level) {
    return std::string(name) + ": " + std::to_string(level);
}

} // namespace

std::vector<std::string> surface::currentLayouts() {
    return {layoutOf<class Framework>(),
            layoutOf<StringHolder>(),
            layoutOf<Exceptions::FrameworkException>(),
            layoutOf<Management::PropertyManager>(),
            layoutOf<Counting::Counter>(),
            layoutOf<CrisisLogging::CrisisLogger>(),
            layoutOf<Logger>(),
            layoutOf<LoggingChannel>(),
            layoutOf<LoggerBackend>(),
            layoutOf<LoggerException>(),
            layoutOf<LoggerBackendLoadError>(),
            layoutOf<LoggingLevel>(),
            "WideString: " + std::to_string(sizeof(Management::WideString)) + " bytes, units of " +
                std::to_string(sizeof(Management::WideString::value_type))};
}

std::vector<std::string> surface::currentLevels() {
    return {
        line("LOG_LEVEL_NONE", LOG_LEVEL_NONE),       line("LOG_LEVEL_TRACE", LOG_LEVEL_TRACE),
        line("LOG_LEVEL_DEBUG", LOG_LEVEL_DEBUG),     line("LOG_LEVEL_INFO", LOG_LEVEL_INFO),
        line("LOG_LEVEL_WARNING", LOG_LEVEL_WARNING), line("LOG_LEVEL_ERROR", LOG_LEVEL_ERROR),
        line("LOG_LEVEL_FATAL", LOG_LEVEL_FATAL),     line("LOG_LEVEL_DEFAULT", LOG_LEVEL_DEFAULT)};
}
