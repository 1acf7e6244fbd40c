#include "Settings.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

#include "ZOL/Framework/Framework.h"

#include "Diagnostics.h"
#include "NearestWord.h"
#include "Process.h"
#include "Text.h"

namespace ZOL::Backends {

using Framework::Management::PropertyManager;
using Framework::Management::WideString;
using NativePath = std::filesystem::path::string_type;

namespace {

/// Parses an integer that takes up the whole text.
template <typename Number>
bool parse(std::string_view text, Number& number) {
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && rest == end;
}

/// The bits to shift a size by for its suffix, 0 without one.
unsigned shiftOf(char suffix) {
    switch (suffix) {
    case 'k':
    case 'K':
        return 10;
    case 'm':
    case 'M':
        return 20;
    case 'g':
    case 'G':
        return 30;
    default:
        return 0;
    }
}

std::optional<std::size_t> parseSize(std::string_view text, long long min) {
    const unsigned shift = text.empty() ? 0 : shiftOf(text.back());
    if (shift != 0) {
        text.remove_suffix(1);
    }
    std::size_t number = 0;
    if (!parse(text, number) || number < static_cast<std::size_t>(min) ||
        number > std::numeric_limits<std::size_t>::max() >> shift) {
        return std::nullopt;
    }
    return number << shift;
}

/// The form of file names: UTF-16 on Windows, UTF-8 elsewhere.
template <typename Text>
NativePath nativePath(const Text& text) {
    if constexpr (std::is_same_v<Text, NativePath>) {
        return text;
    } else {
        return utf8(text);
    }
}

/// A text in braces that a path may contain, and what it stands for.
struct Placeholder {
    std::string_view name;
    std::string value;
};

/// Replaces the placeholders of a path. Unknown ones stay, and are appended to the second argument.
WideString replacePlaceholders(const WideString& path, const std::vector<Placeholder>& placeholders,
                               std::string& unknown) {
    WideString result;
    std::size_t next = 0;
    for (std::size_t begin = 0; (begin = path.find(u'{', next)) != WideString::npos;) {
        const std::size_t end = path.find(u'}', begin);
        if (end == WideString::npos) {
            break;
        }
        const std::string name = utf8(path.substr(begin + 1, end - begin - 1));
        const auto found = std::find_if(
            placeholders.begin(), placeholders.end(),
            [&name](const Placeholder& placeholder) { return placeholder.name == name; });
        result.append(path, next, begin - next);
        if (found != placeholders.end()) {
            result += utf16(found->value);
        } else {
            result.append(path, begin, end + 1 - begin);
            unknown.append(unknown.empty() ? "{" : ", {").append(name).append("}");
        }
        next = end + 1;
    }
    return result.append(path, next, WideString::npos);
}

std::optional<unsigned> parseMode(std::string_view text) {
    constexpr int octal = 8;
    constexpr unsigned maxMode = 0777;
    unsigned mode = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, mode, octal);
    if (error != std::errc() || rest != end || mode > maxMode) {
        return std::nullopt;
    }
    return mode;
}

/// Parses a time such as 200ms, 2s or 5m, from a millisecond to an hour.
std::optional<std::chrono::milliseconds> parseTime(std::string_view text) {
    using namespace std::chrono_literals;
    constexpr std::chrono::milliseconds maxTime = 1h;
    struct Unit {
        std::string_view name;
        std::chrono::milliseconds time;
    };
    constexpr Unit units[] = {{"ms", 1ms}, {"s", 1s}, {"m", 1min}, {"h", 1h}};
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    const std::string_view unitName = text.substr(static_cast<std::size_t>(rest - text.data()));
    for (const Unit& unit : units) {
        if (error == std::errc() && number > 0 && equalsIgnoreCase(unitName, unit.name)) {
            return number <= maxTime / unit.time ? std::optional(number * unit.time) : std::nullopt;
        }
    }
    return std::nullopt;
}

std::optional<FlushSettings> parseFlush(std::string_view text) {
    constexpr std::string_view eachLine = "line";
    /// After which lines below the level are handed over: a reader of the file should see them.
    constexpr std::chrono::seconds intervalBelowLevel(1);
    if (equalsIgnoreCase(text, eachLine)) {
        return FlushSettings();
    }
    FlushSettings flush;
    if (const auto time = parseTime(text)) {
        flush.interval = time;
        return flush;
    }
    const bool isNumber = text.find_first_not_of("-0123456789") == std::string_view::npos;
    const auto level = isNumber ? std::nullopt : parseLevel(text); // more likely a time
    if (level) {
        flush.minLevel = *level;
        flush.interval = intervalBelowLevel;
        return flush;
    }
    return std::nullopt;
}

bool isValidText(SettingType type, const std::string& value) {
    if (value.empty()) {
        return false;
    }
    switch (type) {
    case SettingType::tag:
        return std::none_of(value.begin(), value.end(), endsWord);
    case SettingType::eventSource:
        return value.find('\\') == std::string::npos;
    default:
        return true;
    }
}

std::string inQuotes(const std::string& text) {
    return "\"" + text + "\"";
}

} // namespace

Settings::Settings(std::string backend, const SettingsTable& table)
    : backend_(std::move(backend)), table_(&table) {
    const PropertyManager* const store = Framework::Framework::propertyManager();
    for (const Setting& setting : table) {
        if (table.find(backend_, setting.name) != &setting) {
            continue;
        }
        const std::string ascii = backend_ + "." + std::string(setting.name);
        const WideString property(ascii.begin(), ascii.end());
        if (store->hasProperty(property)) {
            values_[setting.name] = store->readProperty(property);
        }
    }
}

const Setting& Settings::find(std::string_view setting,
                              std::initializer_list<SettingType> types) const {
    const Setting* const found = table_->find(backend_, setting);
    if (found == nullptr || std::find(types.begin(), types.end(), found->type) == types.end()) {
        throw std::logic_error("the table of settings has no such " + backend_ + "." +
                               std::string(setting));
    }
    return *found;
}

const WideString* Settings::valueOf(const Setting& setting) const {
    const auto value = values_.find(setting.name);
    return value == values_.end() ? nullptr : &value->second;
}

std::optional<std::string> Settings::textOf(const Setting& setting) const {
    const WideString* const value = valueOf(setting);
    return value == nullptr ? std::nullopt : std::optional<std::string>(utf8(*value));
}

void Settings::reportInvalid(const Setting& setting, const std::string& value,
                             const std::string& expected, const std::string& used,
                             std::string_view suggestion) const {
    std::string text = "the property " + backend_ + "." + std::string(setting.name) + " is " +
                       inQuotes(value) + " and not " + expected + "; using " + used;
    if (!suggestion.empty()) {
        text.append(" (did you mean ").append(suggestion).append("?)");
    }
    reportToStderr(backend_, text);
}

std::string Settings::text(std::string_view setting) const {
    const Setting& row = find(setting, {SettingType::text, SettingType::pattern, SettingType::tag,
                                        SettingType::eventSource});
    std::optional<std::string> value = textOf(row);
    if (value && isValidText(row.type, *value)) {
        return *std::move(value);
    }
    std::string fallback = defaultOf(row);
    if (value) {
        reportInvalid(row, *value, expectedValue(row), inQuotes(fallback));
    }
    return fallback;
}

std::filesystem::path Settings::path(std::string_view setting) const {
    const Setting& row = find(setting, {SettingType::path});
    const WideString* const value = valueOf(row);
    if (value != nullptr && !value->empty() &&
        value->find(WideString::value_type()) == WideString::npos) {
        std::string unknown;
        const WideString replaced = replacePlaceholders(*value,
                                                        {{"pid", std::to_string(processId())},
                                                         {"program", programName()},
                                                         {"instance", backend_}},
                                                        unknown);
        if (!unknown.empty()) {
            reportToStderr(backend_, "the property " + backend_ + "." + std::string(row.name) +
                                         " contains " + unknown +
                                         " and not only {pid}, {program} and {instance}; using " +
                                         unknown + " as it is");
        }
        return nativePath(replaced);
    }
    const std::string fallback = defaultOf(row);
    if (value != nullptr) {
        reportInvalid(row, utf8(*value), expectedValue(row), inQuotes(fallback));
    }
    return fallback;
}

std::optional<long long> Settings::readNumber(const Setting& row) const {
    const std::optional<std::string> value = textOf(row);
    const std::string fallback = defaultOf(row);
    long long number = 0;
    if (value) {
        if (parse(*value, number) && number >= row.min && number <= row.max) {
            return number;
        }
        reportInvalid(row, *value, expectedValue(row),
                      fallback.empty() ? std::string(row.defaultHelp) : fallback);
    }
    return parse(fallback, number) ? std::optional<long long>(number) : std::nullopt;
}

long long Settings::number(std::string_view setting) const {
    return readNumber(find(setting, {SettingType::number})).value();
}

std::optional<long long> Settings::optionalNumber(std::string_view setting) const {
    return readNumber(find(setting, {SettingType::number}));
}

std::optional<unsigned> Settings::mode(std::string_view setting) const {
    const Setting& row = find(setting, {SettingType::mode});
    const std::optional<std::string> value = textOf(row);
    if (!value) {
        return std::nullopt;
    }
    const std::optional<unsigned> mode = parseMode(*value);
    if (!mode) {
        reportInvalid(row, *value, expectedValue(row), std::string(row.defaultHelp));
    }
    return mode;
}

std::size_t Settings::size(std::string_view setting) const {
    const Setting& row = find(setting, {SettingType::size});
    const std::optional<std::string> value = textOf(row);
    const std::optional<std::size_t> size = value ? parseSize(*value, row.min) : std::nullopt;
    if (size) {
        return *size;
    }
    const std::size_t fallback = parseSize(defaultOf(row), row.min).value();
    if (value) {
        reportInvalid(row, *value, expectedValue(row), std::to_string(fallback));
    }
    return fallback;
}

FlushSettings Settings::flush(std::string_view setting) const {
    const Setting& row = find(setting, {SettingType::flush});
    const std::optional<std::string> value = textOf(row);
    const std::optional<FlushSettings> flush = value ? parseFlush(*value) : std::nullopt;
    if (flush) {
        return *flush;
    }
    if (value) {
        reportInvalid(row, *value, expectedValue(row), std::string(row.defaultValue));
    }
    return parseFlush(row.defaultValue).value();
}

std::string_view Settings::choice(std::string_view setting) const {
    const Setting& row = find(setting, {SettingType::choice});
    const std::optional<std::string> value = textOf(row);
    if (!value) {
        return row.defaultValue;
    }
    const std::vector<std::string_view> choices(row.choices, row.choices + row.choiceCount);
    const auto chosen =
        std::find_if(choices.begin(), choices.end(), [&value](std::string_view choice) {
            return equalsIgnoreCase(*value, choice);
        });
    if (chosen != choices.end()) {
        return *chosen;
    }
    reportInvalid(row, *value, expectedValue(row), std::string(row.defaultValue),
                  nearestWord(*value, choices));
    return row.defaultValue;
}

LevelFilter Settings::levels(std::string_view setting) const {
    const Setting& row = find(setting, {SettingType::levels});
    std::vector<InvalidRule> invalidRules;
    LevelFilter filter(textOf(row).value_or(defaultOf(row)), invalidRules);
    for (const InvalidRule& rule : invalidRules) {
        reportInvalid(row, rule.text, rule.expected, "the other rules", rule.suggestion);
    }
    return filter;
}

} // namespace ZOL::Backends
