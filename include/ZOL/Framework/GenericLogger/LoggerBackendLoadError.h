#pragma once

#include "ZOL/Framework/GenericLogger/LoggerException.h"

namespace ZOL::Framework::GenericLogger {

/// Thrown if an installation is refused because the back end is null or already installed. If a
/// library cannot be loaded, std::runtime_error is thrown instead. The class is inline, so that
/// every module can catch it by its type.
class LoggerBackendLoadError : public LoggerException {
public:
    LoggerBackendLoadError(const char* message, const char* filename, int lineNumber)
        : LoggerException(message, filename, lineNumber) {}
    LoggerBackendLoadError(const LoggerBackendLoadError&) = default;
    LoggerBackendLoadError& operator=(const LoggerBackendLoadError&) = default;
    ~LoggerBackendLoadError() override = default;
};

static_assert(sizeof(LoggerBackendLoadError) == sizeof(LoggerException),
              "the size is part of the binary contract");

} // namespace ZOL::Framework::GenericLogger
