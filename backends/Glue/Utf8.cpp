#include "Utf8.h"

namespace ZOL::Backends {

namespace {

constexpr char32_t replacement = 0xFFFD;
constexpr char32_t firstHigh = 0xD800;
constexpr char32_t firstLow = 0xDC00;
constexpr char32_t behindLow = 0xE000;
constexpr char32_t firstOfPairs = 0x10000;

bool isHigh(char32_t unit) {
    return unit >= firstHigh && unit < firstLow;
}

bool isLow(char32_t unit) {
    return unit >= firstLow && unit < behindLow;
}

void append(std::string& result, char32_t character) {
    const auto add = [&result](char32_t byte) {
        result += static_cast<char>(byte);
    };
    if (character < 0x80) {
        add(character);
    } else if (character < 0x800) {
        add(0xC0 | character >> 6);
        add(0x80 | (character & 0x3F));
    } else if (character < firstOfPairs) {
        add(0xE0 | character >> 12);
        add(0x80 | (character >> 6 & 0x3F));
        add(0x80 | (character & 0x3F));
    } else {
        add(0xF0 | character >> 18);
        add(0x80 | (character >> 12 & 0x3F));
        add(0x80 | (character >> 6 & 0x3F));
        add(0x80 | (character & 0x3F));
    }
}

} // namespace

std::string utf8(const Framework::Management::WideString& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char32_t unit = text[i];
        const char32_t next = i + 1 < text.size() ? text[i + 1] : 0;
        if (isHigh(unit) && isLow(next)) {
            append(result, firstOfPairs + ((unit - firstHigh) << 10) + (next - firstLow));
            ++i;
        } else {
            append(result, isHigh(unit) || isLow(unit) ? replacement : unit);
        }
    }
    return result;
}

} // namespace ZOL::Backends
