#pragma once

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

/// The first few names, and how many more there are.
inline std::string listed(const std::vector<std::string>& names) {
    constexpr std::size_t maxNames = 4;
    std::string list;
    for (std::size_t i = 0; i < names.size() && i < maxNames; ++i) {
        list += (i == 0 ? "" : ", ") + names[i];
    }
    return names.size() > maxNames
               ? list + " and " + std::to_string(names.size() - maxNames) + " more"
               : list;
}

} // namespace backendcheck
