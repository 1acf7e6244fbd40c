#pragma once

#include <ostream>
#include <string>

#include "ZOL/Framework/GenericLogger/LoggingLevel.h"

namespace ZOL::Testing {

/// One message of a CapturedLog.
struct CapturedMessage {
    Framework::GenericLogger::LoggingLevel level;
    std::string logger; ///< the logger's name
    std::string text;   ///< the message only, without time stamp and line end
};

} // namespace ZOL::Testing

// GoogleTest finds PrintTo in the namespace of the printed type and calls it for its failure texts.

namespace ZOL::Framework::GenericLogger {

/// Writes a level as the ready-made back ends do: "ERROR", or "INFO+5" for a level between the
/// named ones.
inline void PrintTo(LoggingLevel level, std::ostream* out) {
    struct NamedLevel {
        const char* name;
        LoggingLevel level;
    };
    constexpr NamedLevel namedLevels[] = {
        {"FATAL", LOG_LEVEL_FATAL}, {"ERROR", LOG_LEVEL_ERROR}, {"WARNING", LOG_LEVEL_WARNING},
        {"INFO", LOG_LEVEL_INFO},   {"DEBUG", LOG_LEVEL_DEBUG}, {"TRACE", LOG_LEVEL_TRACE}};
    if (level == LOG_LEVEL_NONE) {
        *out << "NONE";
        return;
    }
    const NamedLevel* named = namedLevels;
    while (named->level > level && named->level > LOG_LEVEL_TRACE) {
        ++named;
    }
    *out << named->name;
    // In 64 bits: the difference of two levels may overflow an int.
    const long long difference = static_cast<long long>(level) - named->level;
    if (difference != 0) {
        *out << (difference > 0 ? "+" : "") << difference;
    }
}

} // namespace ZOL::Framework::GenericLogger

namespace ZOL::Testing {

/// Writes a message as one line: "ERROR [orders] sold out". Control characters of the text are
/// escaped: "\n", "\x1b".
inline void PrintTo(const CapturedMessage& message, std::ostream* out) {
    constexpr const char* hexDigits = "0123456789abcdef";
    PrintTo(message.level, out);
    *out << " [" << message.logger << "] ";
    for (const char character : message.text) {
        const auto code = static_cast<unsigned char>(character);
        if (character == '\n') {
            *out << "\\n";
        } else if (code < 0x20 || code == 0x7f) {
            *out << "\\x" << hexDigits[code / 16] << hexDigits[code % 16];
        } else {
            *out << character;
        }
    }
}

} // namespace ZOL::Testing
