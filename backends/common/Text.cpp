#include "Text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>

#include <utf8.h>

namespace ZOL::Backends {

namespace {

constexpr char32_t replacement = 0xFFFD;
constexpr char32_t firstHighSurrogate = 0xD800;
constexpr char32_t firstLowSurrogate = 0xDC00;
constexpr char32_t afterSurrogates = 0xE000;
constexpr char32_t firstSupplementary = 0x10000;

constexpr char32_t firstPrintable = ' ';
constexpr char32_t deleteCharacter = 0x7F;
constexpr char32_t lastC1Control = 0x9F;
constexpr char32_t lineSeparator = 0x2028;
constexpr char32_t paragraphSeparator = 0x2029;

constexpr std::string_view ellipsis = "...";

bool isHighSurrogate(char32_t unit) {
    return unit >= firstHighSurrogate && unit < firstLowSurrogate;
}

bool isLowSurrogate(char32_t unit) {
    return unit >= firstLowSurrogate && unit < afterSurrogates;
}

bool isAscii(char character) {
    return static_cast<unsigned char>(character) <= deleteCharacter;
}

/// ASCII that needs no escape.
bool isPlain(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return (byte >= firstPrintable && byte < deleteCharacter) || byte == '\t';
}

/// Whether all eight bytes are plain, without a look at each of them. A tab counts as not plain
/// here.
bool areEightPlain(const char* text) {
    constexpr std::uint64_t ones = 0x0101010101010101U;
    constexpr std::uint64_t highBits = 0x8080808080808080U;
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, text, sizeof(bytes));
    // The high bit of each byte: of the byte itself, or borrowed below a blank, or of a zero byte
    // where the byte is that of Delete. A borrow can mark a byte too many, but none too few.
    const std::uint64_t belowBlank = bytes - ones * firstPrintable;
    const std::uint64_t likeDelete = (bytes ^ (ones * deleteCharacter)) - ones;
    return ((bytes | belowBlank | likeDelete) & highBits) == 0;
}

/// The end of the plain text that begins here.
const char* plainEnd(const char* begin, const char* end) {
    while (end - begin >= static_cast<std::ptrdiff_t>(sizeof(std::uint64_t)) &&
           areEightPlain(begin)) {
        begin += sizeof(std::uint64_t);
    }
    return std::find_if_not(begin, end, isPlain);
}

/// Of characters beyond ASCII.
bool isControlCharacter(char32_t character) {
    return character <= lastC1Control || character == lineSeparator ||
           character == paragraphSeparator;
}

void appendEscape(std::string& line, char32_t character) {
    switch (character) {
    case '\0':
        line += "\\0";
        break;
    case '\n':
        line += "\\n";
        break;
    case '\r':
        line += "\\r";
        break;
    case lineSeparator:
        line += "\\u2028";
        break;
    case paragraphSeparator:
        line += "\\u2029";
        break;
    default:
        constexpr const char* digits = "0123456789ABCDEF";
        line += "\\x";
        line += digits[character >> 4];
        line += digits[character & 0xF];
    }
}

/// Whether valid UTF-8 has a control character.
bool hasControlCharacter(std::string_view text) {
    const char* const end = text.data() + text.size();
    for (const char* next = text.data(); next != end;) {
        if (isControlCharacter(::utf8::unchecked::next(next))) {
            return true;
        }
    }
    return false;
}

/// Appends bytes beyond ASCII.
void appendNonAscii(std::string& line, std::string_view text) {
    std::string valid;
    ::utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(valid), replacement);
    const char* const end = valid.data() + valid.size();
    for (const char* next = valid.data(); next != end;) {
        const char* const begin = next;
        const char32_t character = ::utf8::unchecked::next(next);
        if (isControlCharacter(character)) {
            appendEscape(line, character);
        } else {
            line.append(begin, next);
        }
    }
}

/// The size of the escape that a text begins with. The text begins with a backslash, which need not
/// begin an escape.
std::size_t escapeSize(std::string_view text) {
    switch (text.size() > 1 ? text[1] : '\0') {
    case 'x':
        return std::string_view("\\xHH").size();
    case 'u':
        return std::string_view("\\uHHHH").size();
    default:
        return std::string_view("\\n").size();
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
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t character = text[i];
        const char32_t next = i + 1 < text.size() ? text[i + 1] : 0;
        if (isHighSurrogate(character) && isLowSurrogate(next)) {
            character = firstSupplementary + ((character - firstHighSurrogate) << 10) +
                        (next - firstLowSurrogate);
            ++i;
        } else if (isHighSurrogate(character) || isLowSurrogate(character)) {
            character = replacement;
        }
        ::utf8::append(character, std::back_inserter(result));
    }
    return result;
}

Framework::Management::WideString utf16(std::string_view text) {
    Framework::Management::WideString result;
    result.reserve(text.size());
    ::utf8::utf8to16(text.begin(), text.end(), std::back_inserter(result));
    return result;
}

void appendEscaped(std::string& line, std::string_view text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) {
        text.remove_suffix(1);
    }
    const char* unwritten = text.data();
    const char* const end = text.data() + text.size();
    for (const char* next = unwritten; next != end;) {
        const char* const begin = next;
        if (isPlain(*begin)) {
            next = plainEnd(begin, end);
        } else if (isAscii(*begin)) {
            ++next;
            line.append(unwritten, begin);
            appendEscape(line, static_cast<unsigned char>(*begin));
            unwritten = next;
        } else {
            next = std::find_if(begin, end, isAscii); // no sequence contains ASCII
            if (::utf8::find_invalid(begin, next) != next ||
                hasControlCharacter({begin, static_cast<std::size_t>(next - begin)})) {
                line.append(unwritten, begin);
                appendNonAscii(line, {begin, static_cast<std::size_t>(next - begin)});
                unwritten = next;
            }
        }
    }
    line.append(unwritten, end);
}

std::string escaped(std::string_view text) {
    std::string line;
    appendEscaped(line, text);
    return line;
}

bool endsWord(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte <= firstPrintable || byte == deleteCharacter || character == ':' ||
           character == '[';
}

std::string escapedWord(std::string_view text) {
    std::string word = escaped(text);
    std::replace_if(word.begin(), word.end(), endsWord, '_');
    return word.empty() ? "-" : word;
}

void truncateEscaped(std::string& text, std::size_t maxBytes) {
    if (text.size() <= maxBytes) {
        return;
    }
    std::size_t end = maxBytes - ellipsis.size();
    while (end > 0 && isContinuationByte(text[end])) {
        --end;
    }
    const std::string_view kept = std::string_view(text).substr(0, end);
    const std::size_t backslash = kept.rfind('\\');
    if (backslash != std::string_view::npos &&
        backslash + escapeSize(std::string_view(text).substr(backslash)) > end) {
        end = backslash;
    }
    text.replace(end, std::string::npos, ellipsis);
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
