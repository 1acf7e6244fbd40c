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
