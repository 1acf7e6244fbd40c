#include "Settings.h"

#include <charconv>
#include <limits>
#include <type_traits>

#include "ZOL/Framework/Framework.h"

#include "Complaint.h"
#include "SameText.h"
#include "Utf8.h"

namespace ZOL::Backends {

using Framework::Management::PropertyManager;
using Framework::Management::WideString;

namespace {

/// Numbers without a fraction, and nothing behind them.
template <typename Number>
bool parse(std::string_view text, Number& number) {
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && rest == end;
}

/// By how many bits a size with that last character is to be shifted.
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

/// As it is where files have wide names.
template <typename Text>
spdlog::filename_t fileName(const Text& text) {
    if constexpr (std::is_same_v<Text, spdlog::filename_t>) {
        return text;
    } else {
        return utf8(text);
    }
}

} // namespace

std::string Settings::nameOf(std::string_view setting) const {
    return backend_ + "." + std::string(setting);
}

std::optional<WideString> Settings::find(std::string_view setting) const {
    const std::string ascii = nameOf(setting);
    const WideString name(ascii.begin(), ascii.end());
    const PropertyManager* const store = Framework::Framework::propertyManager();
    if (!store->hasProperty(name)) {
        return std::nullopt;
    }
    return store->readProperty(name);
}

std::optional<std::string> Settings::findText(std::string_view setting) const {
    const std::optional<WideString> value = find(setting);
    return value ? std::optional<std::string>(utf8(*value)) : std::nullopt;
}

void Settings::refuse(std::string_view setting, const std::string& value,
                      const std::string& expected, const std::string& otherwise) const {
    complain(backend_, "the property " + nameOf(setting) + " is \"" + value + "\" and not " +
                           expected + "; using " + otherwise);
}

std::string Settings::text(std::string_view setting, std::string_view otherwise) const {
    const std::optional<std::string> value = findText(setting);
    if (value && value->empty()) {
        refuse(setting, *value, "a text", "\"" + std::string(otherwise) + "\"");
    }
    return value && !value->empty() ? *value : std::string(otherwise);
}

spdlog::filename_t Settings::path(std::string_view setting, std::string_view otherwise) const {
    const std::optional<WideString> value = find(setting);
    const bool usable =
        value && !value->empty() && value->find(WideString::value_type()) == WideString::npos;
    if (value && !usable) {
        refuse(setting, utf8(*value), "the name of a file", "\"" + std::string(otherwise) + "\"");
    }
    if (!usable) {
        return spdlog::filename_t(otherwise.begin(), otherwise.end());
    }
    return fileName(*value);
}

long long Settings::number(std::string_view setting, long long otherwise, long long least,
                           long long most) const {
    const std::optional<std::string> value = findText(setting);
    if (!value) {
        return otherwise;
    }
    long long number = 0;
    if (!parse(*value, number) || number < least || number > most) {
        refuse(setting, *value,
               "a number from " + std::to_string(least) + " to " + std::to_string(most),
               std::to_string(otherwise));
        return otherwise;
    }
    return number;
}

std::size_t Settings::size(std::string_view setting, std::size_t otherwise) const {
    const std::optional<std::string> value = findText(setting);
    if (!value) {
        return otherwise;
    }
    const std::optional<std::size_t> size = parseSize(*value);
    if (!size) {
        refuse(setting, *value, "a size such as 4096, 500K, 10M or 1G", std::to_string(otherwise));
    }
    return size.value_or(otherwise);
}

std::size_t Settings::choice(std::string_view setting,
                             const std::vector<std::string>& choices) const {
    const std::optional<std::string> value = findText(setting);
    if (!value) {
        return 0;
    }
    std::string expected;
    for (std::size_t i = 0; i < choices.size(); ++i) {
        if (sameText(*value, choices[i])) {
            return i;
        }
        expected += (i == 0 ? "one of " : ", ") + choices[i];
    }
    refuse(setting, *value, expected, choices.front());
    return 0;
}

LevelRules Settings::levels(std::string_view setting) const {
    std::vector<std::string> refused;
    LevelRules rules(findText(setting).value_or(""), refused);
    for (const std::string& rule : refused) {
        refuse(setting, rule, "PREFIX=LEVEL with a level such as INFO, 35 or OFF",
               "the other rules");
    }
    return rules;
}

} // namespace ZOL::Backends
