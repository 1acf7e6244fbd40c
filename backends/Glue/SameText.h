#pragma once

#include <algorithm>
#include <string_view>

namespace ZOL::Backends {

/// Whether two texts differ in nothing but the case of ASCII letters.
inline bool sameText(std::string_view left, std::string_view right) {
    const auto lower = [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [lower](char l, char r) { return lower(l) == lower(r); });
}

} // namespace ZOL::Backends
