#pragma once

#include <ios>
#include <ostream>
#include <sstream>
#include <utility>

#include "ZOL/Framework/GenericLogger/LoggingLevel.h"

namespace ZOL::Framework::GenericLogger {

class Logger;

/// One line in the making: the temporary that logger->info() and its siblings return. The line is
/// logged when the object is destroyed, as a rule at the end of the statement:
///
///     logger->info() << "x=" << x;
///
/// Compiled into its user; nothing of it is exported. One object belongs to one thread. A line
/// that holds a zero character ends there.
class LogStream {
public:
    LogStream(Logger* logger, LoggingLevel level, const char* text)
        : logger_(logger), level_(level) {
        throwOnBadStream();
        stream_ << text;
    }

    /// Moves the right to log: the new object takes the text written so far, the source logs
    /// nothing any more.
    LogStream(const LogStream& other) : logger_(other.logger_), level_(other.level_) {
        throwOnBadStream();
        stream_ << other.stream_.str();
        other.level_ = LOG_LEVEL_NONE;
    }

    LogStream& operator=(const LogStream&) = delete;

    /// Hands the line to the logger unless the right to log was given away. What a channel throws
    /// leaves from here, except while another exception is on its way: then it is lost. A line
    /// whose building failed for lack of memory (std::bad_alloc from the insertion) is not logged.
    ~LogStream() noexcept(false);

    template <typename Value>
    LogStream& operator<<(Value&& value) {
        stream_ << std::forward<Value>(value);
        return *this;
    }

    LogStream& operator<<(std::ostream& (*manipulator)(std::ostream&)) {
        stream_ << manipulator;
        return *this;
    }

    LogStream& operator<<(std::ios_base& (*manipulator)(std::ios_base&)) {
        stream_ << manipulator;
        return *this;
    }

private:
    // Otherwise a std::ostream swallows std::bad_alloc and leaves half a line behind.
    void throwOnBadStream() { stream_.exceptions(std::ios_base::badbit); }

    Logger* logger_;
    mutable LoggingLevel level_;

public:
    /// The text; takes every insertion that a std::ostream takes.
    std::ostringstream stream_;
};

} // namespace ZOL::Framework::GenericLogger

#include "ZOL/Framework/GenericLogger/Logger.h"
