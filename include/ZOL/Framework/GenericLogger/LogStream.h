#pragma once

#include <ios>
#include <ostream>
#include <type_traits>
#include <utility>

#include "ZOL/Framework/Export.h"
#include "ZOL/Framework/GenericLogger/LoggingLevel.h"
#include "ZOL/Framework/GenericLogger/detail/TextStream.h"

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
        : logger_(logger), level_(level), stream_(text) {}

    /// Moves the right to log: the new object takes the text written so far, the source logs
    /// nothing any more.
    LogStream(const LogStream& other)
        : logger_(other.logger_), level_(other.level_), stream_(other.stream_.view()) {
        other.level_ = LOG_LEVEL_NONE;
    }

    LogStream& operator=(const LogStream&) = delete;

    /// Hands the line to the logger unless the right to log was given away. What a channel throws
    /// leaves from here, except while another exception is on its way: then it is lost. A line
    /// whose building failed for lack of memory (std::bad_alloc from the insertion) is not logged.
    ZOL_FRAMEWORK_NOINLINE inline ~LogStream() noexcept(false);

    template <typename Value, std::enable_if_t<detail::TextStream::isPassedByValue<Value>, int> = 0>
    LogStream& operator<<(Value value) {
        stream_ << value;
        return *this;
    }

    template <typename Value,
              std::enable_if_t<!detail::TextStream::isPassedByValue<std::decay_t<Value>>, int> = 0>
    LogStream& operator<<(Value&& value) {
        stream_ << std::forward<Value>(value);
        return *this;
    }

    LogStream& operator<<(const char* text) {
        stream_ << text;
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

    LogStream& operator<<(std::ios& (*manipulator)(std::ios&)) {
        stream_ << manipulator;
        return *this;
    }

private:
    Logger* logger_;
    mutable LoggingLevel level_;

public:
    /// The text; takes every insertion that a std::ostream takes, and converts to one.
    detail::TextStream stream_;
};

} // namespace ZOL::Framework::GenericLogger

#include "ZOL/Framework/GenericLogger/Logger.h"
