#include "SinkChannel.h"

#include <spdlog/fmt/fmt.h>

#include "LevelName.h"
#include "OneLine.h"
#include "Shortened.h"

namespace ZOL::Backends {

SinkChannel::SinkChannel(const char* logger, LastingSink& sink, const LevelRules& rules,
                         std::size_t longestLine)
    : logger_(logger),
      shownName_(oneLine(logger)),
      sink_(sink),
      rules_(rules),
      longestLine_(longestLine) {}

void SinkChannel::log(Framework::GenericLogger::LoggingLevel level, const char* text) {
    try {
        if (!rules_.letOut(logger_, level)) {
            return;
        }
        const std::string line = shortened(
            fmt::format("{} [{}] {}", levelName(level), shownName_, oneLine(text)), longestLine_);
        sink_.write(spdlog::details::log_msg(shownName_, sinkLevel(level), line));
    } catch (...) {
        sink_.lose("there is no memory for them"); // and whoever logs is not to be disturbed
    }
}

} // namespace ZOL::Backends
