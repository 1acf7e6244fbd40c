#pragma once

#include <cstdint>
#include <exception>
#include <new>

#include "ZOL/Framework/GenericLogger/Logger.h"

namespace ZOL::Framework::GenericLogger::detail {

/// A line that ends with the number of suppressed executions: "stock is low (9 suppressed)". None
/// are not mentioned.
class SuppressionLine : public LogStream {
public:
    SuppressionLine(Logger* logger, LoggingLevel level, std::uint64_t suppressed)
        : LogStream(logger, level, ""), suppressed_(suppressed) {}
    SuppressionLine(const SuppressionLine&) = delete;
    SuppressionLine& operator=(const SuppressionLine&) = delete;

    /// Completes the line, which the destructor of LogStream then logs.
    ~SuppressionLine() noexcept(false) {
        if (suppressed_ != 0) {
            try {
                TextStream suppressed;
                suppressed << " (" << suppressed_ << " suppressed)";
                stream_.appendUnformatted(suppressed.view());
            } catch (const std::bad_alloc&) {
                // A second exception during stack unwinding would terminate the process.
                if (std::uncaught_exceptions() == 0) {
                    throw;
                }
            }
        }
    }

private:
    std::uint64_t suppressed_;
};

} // namespace ZOL::Framework::GenericLogger::detail
