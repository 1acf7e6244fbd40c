// Uses what only some compilers and flags fit: CompileErrors.cmake compiles it with each. With
// ZOL_TEST_ONE_HEADER, the command line includes the header.

#if !defined(ZOL_TEST_ONE_HEADER)

#include <chrono>
#include <cstddef>

#include "ZOL/Framework/Check.h"
#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/GenericLogger/LogStatements.h"
#include "ZOL/Framework/GenericLogger/LoggerException.h"
#include "ZOL/Framework/Management/PropertyManager.h"
#include "ZOL/Testing/CapturedLog.h"

bool isSet(const ZOL::Framework::Management::WideString& name);

bool isSet(const ZOL::Framework::Management::WideString& name) {
    return ZOL::Framework::Framework::propertyManager()->hasProperty(name);
}

bool hasCaptured(const ZOL::Testing::CapturedLog& log);

bool hasCaptured(const ZOL::Testing::CapturedLog& log) {
    return !log.empty() && log[0].level > 0 && log.begin() != log.end();
}

void logSome(ZOL::Framework::GenericLogger::Logger* logger);

void logSome(ZOL::Framework::GenericLogger::Logger* logger) {
    using namespace ZOL::Framework::GenericLogger;
    ZOL_CHECK(logger != nullptr) << "no logger";
    ZOL_LOG_EVERY_N(logger, LOG_LEVEL_INFO, 10) << "every n " << [logger] {
        ZOL_LOG_EVERY(logger, LOG_LEVEL_INFO, std::chrono::seconds(1)) << "every";
        return 1;
    }();
    const std::size_t size = 10;
    ZOL_LOG_EVERY_N(logger, LOG_LEVEL_INFO, size) << "every n";
    ZOL_LOG_FIRST_N(logger, LOG_LEVEL_INFO, size) << "first n";
    ZOL_LOG_ONCE(logger, LOG_LEVEL_INFO) << "once";
    ZOL_LOG_IF(logger, LOG_LEVEL_INFO, logger != nullptr) << "if";
    ZOL_LOG_HERE(logger, LOG_LEVEL_INFO) << "here";
}

#endif
