#include "StandardError.h"

namespace ZOL::Backends {

namespace {

constexpr std::string_view defaultColour = "\033[m";

std::string_view escapeCode(spdlog::level::level_enum level) {
    switch (level) {
    case spdlog::level::trace:
        return "\033[37m"; // white
    case spdlog::level::debug:
        return "\033[36m"; // cyan
    case spdlog::level::info:
        return "\033[32m"; // green
    case spdlog::level::warn:
        return "\033[33m\033[1m"; // bold yellow
    case spdlog::level::err:
        return "\033[31m\033[1m"; // bold red
    case spdlog::level::critical:
        return "\033[1m\033[41m"; // bold on red
    default:
        return defaultColour;
    }
}

} // namespace

std::string withEscapeCodes(const ColouredText& text) {
    std::string result(text.text.substr(0, text.begin));
    result += escapeCode(text.level);
    result += text.text.substr(text.begin, text.end - text.begin);
    result += defaultColour;
    result += text.text.substr(text.end);
    return result;
}

} // namespace ZOL::Backends
