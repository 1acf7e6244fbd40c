// The Console back end: every message as one line on standard error,
//
//     2026-01-31 09:05:07.012 WARNING [orders] stock is low
//
// in the colour of its level if standard error is a terminal.

#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include <spdlog/sinks/stdout_color_sinks.h>

#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

constexpr const char* linePattern = "%Y-%m-%d %H:%M:%S.%e %^%v%$";

struct NamedLevel {
    const char* name;
    LoggingLevel level;
    spdlog::level::level_enum colour;
};

constexpr NamedLevel namedLevels[] = {
    {"FATAL", LOG_LEVEL_FATAL, spdlog::level::critical},
    {"ERROR", LOG_LEVEL_ERROR, spdlog::level::err},
    {"WARNING", LOG_LEVEL_WARNING, spdlog::level::warn},
    {"INFO", LOG_LEVEL_INFO, spdlog::level::info},
    {"DEBUG", LOG_LEVEL_DEBUG, spdlog::level::debug},
    {"TRACE", LOG_LEVEL_TRACE, spdlog::level::trace},
};

/// The named level at or below this one; what lies below all of them counts as the lowest.
const NamedLevel& namedLevelOf(LoggingLevel level) {
    const NamedLevel* named = std::begin(namedLevels);
    while (named->level > level && std::next(named) != std::end(namedLevels)) {
        ++named;
    }
    return *named;
}

/// INFO for 30, INFO+5 for 35, NONE for 0.
std::string levelName(LoggingLevel level) {
    if (level == LOG_LEVEL_NONE) {
        return "NONE";
    }
    const NamedLevel& named = namedLevelOf(level);
    return level == named.level ? named.name
                                : fmt::format("{}{:+d}", named.name, level - named.level);
}

/// A message stays one line: line breaks inside become visible, those at its end go.
std::string oneLine(std::string_view text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) {
        text.remove_suffix(1);
    }
    std::string line;
    line.reserve(text.size());
    for (const char character : text) {
        if (character == '\n') {
            line += "\\n";
        } else if (character == '\r') {
            line += "\\r";
        } else {
            line += character;
        }
    }
    return line;
}

using Sink = spdlog::sinks::stderr_color_sink_st; // the logger's own lock keeps calls apart

class ConsoleChannel final : public LoggingChannel {
public:
    ConsoleChannel(const char* name, std::shared_ptr<Sink> sink)
        : name_(oneLine(name)), sink_(std::move(sink)) {}

    void release() override {}

    void log(LoggingLevel level, const char* text) override {
        try {
            const std::string line =
                fmt::format("{} [{}] {}", levelName(level), name_, oneLine(text));
            sink_->log(spdlog::details::log_msg(name_, namedLevelOf(level).colour, line));
            sink_->flush();
        } catch (...) {
            // A standard error that takes no text is no reason to disturb whoever logs.
        }
    }

private:
    std::string name_;
    std::shared_ptr<Sink> sink_;
};

class ConsoleBackend final : public LoggerBackend {
public:
    ConsoleBackend() : sink_(std::make_shared<Sink>()) { sink_->set_pattern(linePattern); }

    /// One channel for each name, however often it is asked for.
    LoggingChannel* createChannel(const char* name) override {
        std::unique_ptr<ConsoleChannel>& channel = channels_[name];
        if (channel == nullptr) {
            channel = std::make_unique<ConsoleChannel>(name, sink_);
        }
        return channel.get();
    }

private:
    std::shared_ptr<Sink> sink_;
    std::map<std::string, std::unique_ptr<ConsoleChannel>> channels_;
};

} // namespace

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    // Never destroyed: a program's last words may come from behind the clean-up of this library.
    static auto* const backend = new ConsoleBackend;
    return backend;
}
