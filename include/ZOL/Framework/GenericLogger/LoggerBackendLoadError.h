#pragma once

#include "ZOL/Framework/GenericLogger/LoggerException.h"

namespace ZOL::Framework::GenericLogger {

/// A refused installation: the back end is null or already installed. A library that cannot be
/// loaded is a std::runtime_error instead. Inline, so that every module can catch it by its type.
class LoggerBackendLoadError : public LoggerException {
public:
    LoggerBackendLoadError(const char* message, const char* filename, int lineNumber)
        : LoggerException(message, filename, lineNumber) {}
    LoggerBackendLoadError(const LoggerBackendLoadError&) = default;
    LoggerBackendLoadError& operator=(const LoggerBackendLoadError&) = default;
    ~LoggerBackendLoadError() override = default;
};

static_assert(sizeof(LoggerBackendLoadError) == sizeof(LoggerException), "it adds a type alone");

} // namespace ZOL::Framework::GenericLogger
