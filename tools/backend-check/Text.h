#pragma once

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

inline bool endsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

/// The text in quotation marks, shortened and with escaped line breaks.
inline std::string inQuotes(std::string_view text) {
    constexpr std::size_t maxLength = 40;
    std::string result = "\"";
    for (const char c : text.substr(0, maxLength)) {
        if (c == '\n') {
            result += "\\n";
        } else if (c == '\r') {
            result += "\\r";
        } else {
            result += c;
        }
    }
    return result + (text.size() > maxLength ? "...\"" : "\"");
}

/// The parts between separators, empty ones included. No parts if the text is null or empty.
inline std::vector<std::string> split(const char* text, char separator) {
    std::vector<std::string> parts;
    std::istringstream stream(text != nullptr ? text : "");
    for (std::string part; std::getline(stream, part, separator);) {
        parts.push_back(part);
    }
    return parts;
}

/// The first names, with commas.
inline std::string joined(const std::vector<std::string>& names, std::size_t count) {
    std::string list;
    for (std::size_t i = 0; i < names.size() && i < count; ++i) {
        list += (i == 0 ? "" : ", ") + names[i];
    }
    return list;
}

/// The first few names, and how many more there are.
inline std::string listed(const std::vector<std::string>& names) {
    constexpr std::size_t maxNames = 4;
    std::string list = joined(names, maxNames);
    if (names.size() > maxNames) {
        list += " and " + std::to_string(names.size() - maxNames) + " more";
    }
    return list;
}

} // namespace backendcheck
