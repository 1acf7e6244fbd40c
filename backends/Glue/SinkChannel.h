#pragma once

#include <cstddef>
#include <string>

#include "ZOL/Framework/GenericLogger/LoggingChannel.h"

#include "LastingSink.h"
#include "LevelRules.h"

namespace ZOL::Backends {

/// One logger's way into a sink: "LEVEL [logger] text" is what the sink's pattern knows as %v.
class SinkChannel final : public Framework::GenericLogger::LoggingChannel {
public:
    /// The sink and the rules are the back end's, which outlives its channels.
    SinkChannel(const char* logger, LastingSink& sink, const LevelRules& rules,
                std::size_t longestLine);

    void release() override {}
    void log(Framework::GenericLogger::LoggingLevel level, const char* text) override;

private:
    std::string logger_;
    std::string shownName_;
    LastingSink& sink_;
    const LevelRules& rules_;
    std::size_t longestLine_;
};

} // namespace ZOL::Backends
