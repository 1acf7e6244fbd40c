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

/// "orders" in quotation marks, with what cannot be shown as it is in other words.
inline std::string inQuotes(std::string_view text) {
    constexpr std::size_t most = 40;
    std::string result = "\"";
    for (const char c : text.substr(0, most)) {
        if (c == '\n') {
            result += "\\n";
        } else if (c == '\r') {
            result += "\\r";
        } else {
            result += c;
        }
    }
    return result + (text.size() > most ? "...\"" : "\"");
}

/// The first few, and how many more there are.
inline std::string listed(const std::vector<std::string>& names) {
    constexpr std::size_t most = 4;
    std::string list;
    for (std::size_t i = 0; i < names.size() && i < most; ++i) {
        list += (i == 0 ? "" : ", ") + names[i];
    }
    return names.size() > most ? list + " and " + std::to_string(names.size() - most) + " more"
                               : list;
}

} // namespace backendcheck
