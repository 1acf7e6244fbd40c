#include "LevelRules.h"

#include <limits>

#include "LevelName.h"
#include "SameText.h"

namespace ZOL::Backends {

namespace {

constexpr const char* silence = "OFF";
constexpr long long aboveAllLevels = static_cast<long long>(std::numeric_limits<int>::max()) + 1;

std::string_view trimmed(std::string_view text) {
    constexpr const char* blanks = " \t";
    const std::size_t begin = text.find_first_not_of(blanks);
    return begin == std::string_view::npos
               ? std::string_view()
               : text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

} // namespace

LevelRules::LevelRules(std::string_view rules, std::vector<std::string>& refused) {
    while (!rules.empty()) {
        const std::size_t end = rules.find(';');
        const std::string_view rule = trimmed(rules.substr(0, end));
        rules.remove_prefix(end == std::string_view::npos ? rules.size() : end + 1);
        if (!rule.empty() && !add(rule)) {
            refused.emplace_back(rule);
        }
    }
}

bool LevelRules::add(std::string_view rule) {
    const std::size_t sign = rule.rfind('='); // a logger's name may have one, a level has none
    if (sign == std::string_view::npos) {
        return false;
    }
    const std::string_view level = trimmed(rule.substr(sign + 1));
    const auto known = levelOf(level);
    if (!known && !sameText(level, silence)) {
        return false;
    }
    const long long least = known ? static_cast<long long>(*known) : aboveAllLevels;
    rules_.push_back({std::string(trimmed(rule.substr(0, sign))), least});
    return true;
}

bool LevelRules::letOut(std::string_view logger,
                        Framework::GenericLogger::LoggingLevel level) const {
    const Rule* longest = nullptr;
    for (const Rule& rule : rules_) {
        // Of two rules with one prefix, the later counts.
        if (logger.substr(0, rule.prefix.size()) == rule.prefix &&
            (longest == nullptr || rule.prefix.size() >= longest->prefix.size())) {
            longest = &rule;
        }
    }
    return longest == nullptr || level >= longest->least;
}

} // namespace ZOL::Backends
