#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

namespace ZOL::Framework::GenericLogger {

LoggerBackend::LoggerBackend() = default;

LoggerBackend::LoggerBackend(const LoggerBackend&) = default;

LoggerBackend& LoggerBackend::operator=(const LoggerBackend&) = default;

LoggerBackend::~LoggerBackend() = default;

} // namespace ZOL::Framework::GenericLogger
