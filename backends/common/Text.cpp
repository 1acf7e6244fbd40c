#include "Text.h"

#include <algorithm>

namespace ZOL::Backends {

namespace {

constexpr char32_t replacement = 0xFFFD;
constexpr char32_t firstHighSurrogate = 0xD800;
constexpr char32_t firstLowSurrogate = 0xDC00;
constexpr char32_t afterSurrogates = 0xE000;
constexpr char32_t firstSupplementary = 0x10000;

constexpr std::string_view ellipsis = "...";

bool isHighSurrogate(char32_t unit) {
    return unit >= firstHighSurrogate && unit < firstLowSurrogate;
}

bool isLowSurrogate(char32_t unit) {
    return unit >= firstLowSurrogate && unit < afterSurrogates;
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
    } else if (character < firstSupplementary) {
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

bool isContinuationByte(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

char lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

} // namespace

std::string utf8(const Framework::Management::WideString& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char32_t unit = text[i];
        const char32_t next = i + 1 < text.size() ? text[i + 1] : 0;
        if (isHighSurrogate(unit) && isLowSurrogate(next)) {
            append(result, firstSupplementary + ((unit - firstHighSurrogate) << 10) +
                               (next - firstLowSurrogate));
            ++i;
        } else {
            append(result, isHighSurrogate(unit) || isLowSurrogate(unit) ? replacement : unit);
        }
    }
    return result;
}

std::string escapeControlCharacters(std::string_view text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) {
        text.remove_suffix(1);
    }
    std::string line;
    line.reserve(text.size());
    for (const char character : text) {
        if (character == '\n') {
            line += "\\n";
        } else if (character == '\r') {
            line += "\\r";
        } else if (character == '\0') {
            line += "\\0"; // C functions would stop reading here
        } else {
            line += character;
        }
    }
    return line;
}

std::string truncateUtf8(std::string text, std::size_t maxBytes) {
    if (text.size() <= maxBytes) {
        return text;
    }
    std::size_t end = maxBytes - ellipsis.size();
    while (end > 0 && isContinuationByte(text[end])) {
        --end;
    }
    return text.replace(end, std::string::npos, ellipsis);
}

bool equalsIgnoreCase(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char l, char r) { return lower(l) == lower(r); });
}

std::string_view trim(std::string_view text) {
    constexpr const char* blanks = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(blanks);
    return begin == std::string_view::npos
               ? std::string_view()
               : text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

} // namespace ZOL::Backends
