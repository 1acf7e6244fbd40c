#pragma once

#include "ZOL/Framework/Counting/Counter.h"
#include "ZOL/Framework/GenericLogger/LoggingLevel.h"

namespace Demo {

// Whoever asks for one of these names, host or module, gets the same counter.
constexpr const char* messageCounterName = "demo.messages";
constexpr const char* alertCounterName = "demo.alerts";

/// Counts the messages of a module, on the counters that all modules count on.
class MessageCounts {
public:
    /// Reads from the property store what an alert is; throws std::runtime_error if it is no level.
    MessageCounts();

    void count(ZOL::Framework::GenericLogger::LoggingLevel level);

private:
    ZOL::Framework::Counting::Counter& messages_;
    ZOL::Framework::Counting::Counter& alerts_;
    ZOL::Framework::GenericLogger::LoggingLevel alertLevel_;
};

} // namespace Demo
