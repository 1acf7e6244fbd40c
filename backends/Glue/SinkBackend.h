#pragma once

#include <chrono>
#include <cstddef>
#include <limits>
#include <map>
#include <memory>
#include <string>

#include <spdlog/details/os.h>

#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

#include "LastingSink.h"
#include "LevelRules.h"
#include "Settings.h"
#include "SinkChannel.h"

namespace ZOL::Backends {

/// Time stamp and %v, which is "LEVEL [logger] text", in the colour of the level.
extern const char* const stampedLine;

/// What sets one back end apart from the others.
struct SinkPlan {
    SinkMaker make;
    const char* pattern = stampedLine; ///< unless a property says other
    const char* lineEnd = spdlog::details::os::default_eol;
    std::chrono::milliseconds pause = std::chrono::seconds(1); ///< between attempts to open
    /// Of %v, in bytes; what is longer is cut. A sink that fails for a long line would be given up
    /// for a while, and shorter ones would be lost with it.
    std::size_t longestLine = std::numeric_limits<std::size_t>::max();
};

/// A back end that writes to one sink. The logging lock keeps its calls apart.
class SinkBackend final : public Framework::GenericLogger::LoggerBackend {
public:
    SinkBackend(const Settings& settings, SinkPlan plan);

    /// One channel for each name, however often it is asked for; null if there is no memory.
    Framework::GenericLogger::LoggingChannel* createChannel(const char* name) override;

    /// Tells of a loss that has not ended.
    void sayFarewell() const noexcept { sink_.sayFarewell(); }

private:
    LevelRules rules_;
    LastingSink sink_;
    std::size_t longestLine_;
    std::map<std::string, std::unique_ptr<SinkChannel>> channels_;
};

/// What a plug-in's createBackend has to return: a back end that is never destroyed, since a
/// program's last words may come from behind the clean-up of the plug-in. Null if there is no
/// memory; never throws.
SinkBackend* makeSinkBackend(const char* name, SinkPlan (*plan)(const Settings&)) noexcept;

} // namespace ZOL::Backends
