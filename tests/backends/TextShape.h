#pragma once

#include <algorithm>
#include <string_view>

/// The shape of the time stamp in the default pattern.
constexpr std::string_view timeStampShape = "0000-00-00 00:00:00.000";

/// Whether a text equals the shape, in which 0 stands for any digit.
inline bool hasShape(std::string_view text, std::string_view shape) {
    return std::equal(text.begin(), text.end(), shape.begin(), shape.end(),
                      [](char c, char s) { return s == '0' ? c >= '0' && c <= '9' : c == s; });
}
