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

/// One line under construction: the temporary that Logger::info and the other level functions
/// return. The destructor logs the line, usually at the end of the statement:
///
///     logger->info() << "x=" << x;
///
/// The class is compiled into its user; the module exports nothing of it. One object belongs to one
/// thread. The logged text ends at its first zero character.
///
/// An insertion throws only std::bad_alloc. A null C string is logged as "(null)". If an insertion
/// fails or its operator throws something else, the line contains what was written until then and
/// what later insertions append.
class LogStream {
public:
    /// @param text the beginning of the line; null is logged as "(null)".
    LogStream(Logger* logger, LoggingLevel level, const char* text)
        : logger_(logger), level_(level), stream_(text) {}

    /// Transfers the right to log: the new object copies the text written so far, and the source
    /// logs nothing.
    LogStream(const LogStream& other)
        : logger_(other.logger_), level_(other.level_), stream_(other.stream_.view()) {
        other.level_ = LOG_LEVEL_NONE;
    }

    LogStream& operator=(const LogStream&) = delete;

    /// Passes the line to the logger, unless the right to log was transferred. Throws what a
    /// channel throws, except during stack unwinding: then the exception is discarded. A line is
    /// not logged if one of its insertions ran out of memory (and threw std::bad_alloc).
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
    /// The text. Accepts every insertion that a std::ostream accepts, and converts to
    /// std::ostream&.
    detail::TextStream stream_;
};

} // namespace ZOL::Framework::GenericLogger

#include "ZOL/Framework/GenericLogger/Logger.h"
