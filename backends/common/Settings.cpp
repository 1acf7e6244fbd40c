#include "Settings.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

#include "ZOL/Framework/Framework.h"

#include "Diagnostics.h"
#include "NearestWord.h"
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

std::optional<std::size_t> parseSize(std::string_view text) {
    const unsigned shift = text.empty() ? 0 : shiftOf(text.back());
    if (shift != 0) {
        text.remove_suffix(1);
    }
    std::size_t number = 0;
    if (!parse(text, number) || number == 0 ||
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
        return nativePath(*value);
    }
    const std::string fallback = defaultOf(row);
    if (value != nullptr) {
        reportInvalid(row, utf8(*value), expectedValue(row), inQuotes(fallback));
    }
    return fallback;
}

long long Settings::number(std::string_view setting) const {
    const Setting& row = find(setting, {SettingType::number});
    const std::optional<std::string> value = textOf(row);
    long long number = 0;
    if (value && parse(*value, number) && number >= row.min && number <= row.max) {
        return number;
    }
    const std::string fallback = defaultOf(row);
    if (value) {
        reportInvalid(row, *value, expectedValue(row), fallback);
    }
    parse(fallback, number);
    return number;
}

std::size_t Settings::size(std::string_view setting) const {
    const Setting& row = find(setting, {SettingType::size});
    const std::optional<std::string> value = textOf(row);
    const std::optional<std::size_t> size = value ? parseSize(*value) : std::nullopt;
    if (size) {
        return *size;
    }
    const std::size_t fallback = parseSize(defaultOf(row)).value();
    if (value) {
        reportInvalid(row, *value, expectedValue(row), std::to_string(fallback));
    }
    return fallback;
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
