#include "reader/LineLevel.h"

#include <algorithm>
#include <cctype>
#include <string>

using namespace ZOL::Framework::GenericLogger;

namespace Demo {

namespace {

struct TellingWord {
    std::string_view text;
    LoggingLevel level;
};

constexpr TellingWord tellingWords[] = {
    {"fatal", LOG_LEVEL_FATAL},
    {"panic", LOG_LEVEL_FATAL},
    {"critical", LOG_LEVEL_FATAL},
    {"emergency", LOG_LEVEL_FATAL},

    {"error", LOG_LEVEL_ERROR},
    {"errors", LOG_LEVEL_ERROR},
    {"fail", LOG_LEVEL_ERROR},
    {"fails", LOG_LEVEL_ERROR},
    {"failed", LOG_LEVEL_ERROR},
    {"failure", LOG_LEVEL_ERROR},
    {"failures", LOG_LEVEL_ERROR},

    {"warn", LOG_LEVEL_WARNING},
    {"warning", LOG_LEVEL_WARNING},
    {"warnings", LOG_LEVEL_WARNING},
    {"half-installed", LOG_LEVEL_WARNING},
    {"half-configured", LOG_LEVEL_WARNING},

    {"info", LOG_LEVEL_INFO},
    {"notice", LOG_LEVEL_INFO},
    {"install", LOG_LEVEL_INFO},
    {"upgrade", LOG_LEVEL_INFO},
    {"remove", LOG_LEVEL_INFO},
    {"purge", LOG_LEVEL_INFO},

    {"debug", LOG_LEVEL_DEBUG},
    {"status", LOG_LEVEL_DEBUG},
};

// The dash counts, so that neither "liberror-perl" nor "libgpg-error0" is an error.
bool belongsToWord(char character) {
    return std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '-';
}

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char character) {
        return static_cast<char>(std::tolower(character));
    });
    return lower;
}

LoggingLevel levelOfWord(std::string_view word) {
    const std::string lower = lowerCase(word);
    const auto* const telling =
        std::find_if(std::begin(tellingWords), std::end(tellingWords),
                     [&lower](const TellingWord& candidate) { return candidate.text == lower; });
    return telling != std::end(tellingWords) ? telling->level : LOG_LEVEL_TRACE;
}

} // namespace

LoggingLevel levelOf(std::string_view line) {
    LoggingLevel level = LOG_LEVEL_TRACE;
    auto wordBegin = line.begin();
    while (wordBegin != line.end()) {
        const auto wordEnd = std::find_if_not(wordBegin, line.end(), belongsToWord);
        const auto length = static_cast<std::size_t>(wordEnd - wordBegin);
        const auto offset = static_cast<std::size_t>(wordBegin - line.begin());
        level = std::max(level, levelOfWord(line.substr(offset, length)));
        wordBegin = std::find_if(wordEnd, line.end(), belongsToWord);
    }
    return level;
}

} // namespace Demo
