// The statements before the include must not give the inline function another object here.
#include "ZOL/Framework/GenericLogger/LogStatements.h"

namespace {

[[maybe_unused]] void logBefore(ZOL::Framework::GenericLogger::Logger* logger) {
    ZOL_LOG_ONCE(logger, ZOL::Framework::GenericLogger::LOG_LEVEL_FATAL) << "never called";
}

} // namespace

#include "InlineStatements.h"

void logOnceInlineElsewhere(ZOL::Framework::GenericLogger::Logger* logger) {
    logOnceInline(logger);
}
