#include "Settings.h"

#include <charconv>
#include <limits>
#include <type_traits>

#include "ZOL/Framework/Framework.h"

#include "Diagnostics.h"
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

/// Unchanged where paths are wide, otherwise in UTF-8.
template <typename Text>
NativePath nativePath(const Text& text) {
    if constexpr (std::is_same_v<Text, NativePath>) {
        return text;
    } else {
        return utf8(text);
    }
}

} // namespace

std::string Settings::propertyName(std::string_view setting) const {
    return backend_ + "." + std::string(setting);
}

std::optional<WideString> Settings::read(std::string_view setting) const {
    const std::string ascii = propertyName(setting);
    const WideString name(ascii.begin(), ascii.end());
    const PropertyManager* const store = Framework::Framework::propertyManager();
    if (!store->hasProperty(name)) {
        return std::nullopt;
    }
    return store->readProperty(name);
}

std::optional<std::string> Settings::readText(std::string_view setting) const {
    const std::optional<WideString> value = read(setting);
    return value ? std::optional<std::string>(utf8(*value)) : std::nullopt;
}

void Settings::reportInvalid(std::string_view setting, const std::string& value,
                             const std::string& expected, const std::string& used) const {
    reportToStderr(backend_, "the property " + propertyName(setting) + " is \"" + value +
                                 "\" and not " + expected + "; using " + used);
}

std::string Settings::text(std::string_view setting, std::string_view fallback) const {
    const std::optional<std::string> value = readText(setting);
    if (value && value->empty()) {
        reportInvalid(setting, *value, "a text", "\"" + std::string(fallback) + "\"");
    }
    return value && !value->empty() ? *value : std::string(fallback);
}

std::filesystem::path Settings::path(std::string_view setting, std::string_view fallback) const {
    const std::optional<WideString> value = read(setting);
    const bool isValid =
        value && !value->empty() && value->find(WideString::value_type()) == WideString::npos;
    if (value && !isValid) {
        reportInvalid(setting, utf8(*value), "the name of a file",
                      "\"" + std::string(fallback) + "\"");
    }
    return isValid ? nativePath(*value) : NativePath(fallback.begin(), fallback.end());
}

long long Settings::number(std::string_view setting, long long fallback, long long min,
                           long long max) const {
    const std::optional<std::string> value = readText(setting);
    if (!value) {
        return fallback;
    }
    long long number = 0;
    if (!parse(*value, number) || number < min || number > max) {
        reportInvalid(setting, *value,
                      "a number from " + std::to_string(min) + " to " + std::to_string(max),
                      std::to_string(fallback));
        return fallback;
    }
    return number;
}

std::size_t Settings::size(std::string_view setting, std::size_t fallback) const {
    const std::optional<std::string> value = readText(setting);
    if (!value) {
        return fallback;
    }
    const std::optional<std::size_t> size = parseSize(*value);
    if (!size) {
        reportInvalid(setting, *value, "a size such as 4096, 500K, 10M or 1G",
                      std::to_string(fallback));
    }
    return size.value_or(fallback);
}

std::size_t Settings::choice(std::string_view setting,
                             const std::vector<std::string>& choices) const {
    const std::optional<std::string> value = readText(setting);
    if (!value) {
        return 0;
    }
    std::string expected;
    for (std::size_t i = 0; i < choices.size(); ++i) {
        if (equalsIgnoreCase(*value, choices[i])) {
            return i;
        }
        expected += (i == 0 ? "one of " : ", ") + choices[i];
    }
    reportInvalid(setting, *value, expected, choices.front());
    return 0;
}

LevelFilter Settings::levels(std::string_view setting) const {
    std::vector<std::string> invalidRules;
    LevelFilter filter(readText(setting).value_or(""), invalidRules);
    for (const std::string& rule : invalidRules) {
        reportInvalid(setting, rule, "PREFIX=LEVEL with a level such as INFO, 35 or OFF",
                      "the other rules");
    }
    return filter;
}

} // namespace ZOL::Backends
