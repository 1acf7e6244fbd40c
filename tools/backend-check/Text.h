#pragma once

#include <chrono>
#include <filesystem>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace backendcheck {

inline std::string lower(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return result;
}

/// A UTF-8 text in UTF-16. Throws std::exception for other texts.
template <typename WideText>
WideText wideOf(const std::string& text) {
    return std::filesystem::u8path(text).string<typename WideText::value_type>();
}

/// A line for a terminal: not too long, and without control characters.
inline std::string printable(const std::string& line) {
    constexpr std::size_t maxLength = 200;
    std::string result;
    for (const char c : line.substr(0, maxLength)) {
        if (c != '\r') {
            result += static_cast<unsigned char>(c) < ' ' || c == '\x7F' ? '?' : c;
        }
    }
    return line.size() > maxLength ? result + "..." : result;
}

/// Such as "1.500 ms".
inline std::string inMilliseconds(std::chrono::steady_clock::duration time) {
    std::ostringstream text;
    text.precision(3);
    text << std::fixed << std::chrono::duration<double, std::milli>(time).count() << " ms";
    return text.str();
}

/// The first few names, and how many more there are.
inline std::string listed(const std::vector<std::string>& names) {
    constexpr std::size_t maxNames = 4;
    std::string list;
    for (std::size_t i = 0; i < names.size() && i < maxNames; ++i) {
        list += (i == 0 ? "" : ", ") + names[i];
    }
    if (names.size() > maxNames) {
        list += " and " + std::to_string(names.size() - maxNames) + " more";
    }
    return list;
}

} // namespace backendcheck
