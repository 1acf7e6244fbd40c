#pragma once

#include <chrono>
#include <string>

#include <spdlog/details/log_msg.h>

#include "Levels.h"
#include "Pattern.h"

/// A formatter with its record.
class PatternLine {
public:
    explicit PatternLine(std::string_view pattern,
                         spdlog::pattern_time_type timeType = spdlog::pattern_time_type::utc)
        : formatter_(ZOL::Backends::makeFormatter(pattern, timeType, "", record)) {}

    /// The line for the record at a time.
    std::string at(std::chrono::system_clock::time_point time) const {
        const spdlog::details::log_msg message(time, {}, "", ZOL::Backends::sinkLevel(record.level),
                                               "");
        spdlog::memory_buf_t line;
        formatter_->format(message, line);
        return std::string(line.data(), line.size());
    }

    ZOL::Backends::Record record{ZOL::Framework::GenericLogger::LOG_LEVEL_WARNING, "orders",
                                 "WARNING [orders] stock is low", "stock is low"};

private:
    std::unique_ptr<spdlog::formatter> formatter_;
};

/// 2026-01-31 09:05:07.0123456 UTC. The clock of Windows has steps of 100 ns.
inline std::chrono::system_clock::time_point exampleTime() {
    return std::chrono::system_clock::from_time_t(1769850307) +
           std::chrono::duration_cast<std::chrono::system_clock::duration>(
               std::chrono::nanoseconds(12345600));
}
