#pragma once

#include "ZOL/Framework/GenericLogger/Logger.h"

namespace support {

/// Calls the private Logger::do_log, the only way in for a message of LOG_LEVEL_NONE: LogStream
/// never passes one on. An explicit instantiation may name a private member.
void doLog(ZOL::Framework::GenericLogger::Logger* logger,
           ZOL::Framework::GenericLogger::LoggingLevel level, const char* text);

template <void (ZOL::Framework::GenericLogger::Logger::*Member)(
    ZOL::Framework::GenericLogger::LoggingLevel, const char*)>
struct DoLogKey {
    friend void doLog(ZOL::Framework::GenericLogger::Logger* logger,
                      ZOL::Framework::GenericLogger::LoggingLevel level, const char* text) {
        (logger->*Member)(level, text);
    }
};

template struct DoLogKey<&ZOL::Framework::GenericLogger::Logger::do_log>;

} // namespace support
