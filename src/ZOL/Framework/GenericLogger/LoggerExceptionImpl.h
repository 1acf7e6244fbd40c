#pragma once

#include <string>

namespace ZOL::Framework::GenericLogger {

/// The private block of a LoggerException.
struct LoggerExceptionImpl {
    std::string message_;
    std::string filename_;
    int lineNumber_;
    std::string whatText_; // empty until the first call of what
};

} // namespace ZOL::Framework::GenericLogger
