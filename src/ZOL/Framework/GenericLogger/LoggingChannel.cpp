#include "ZOL/Framework/GenericLogger/LoggingChannel.h"

namespace ZOL::Framework::GenericLogger {

LoggingChannel::LoggingChannel() = default;

LoggingChannel::LoggingChannel(const LoggingChannel&) = default;

LoggingChannel& LoggingChannel::operator=(const LoggingChannel&) = default;

LoggingChannel::~LoggingChannel() = default;

} // namespace ZOL::Framework::GenericLogger
