#include "EscapedText.h"

#include <cstddef>

namespace {

/// The size of the well-formed UTF-8 sequence that a text begins with, after the table of the
/// Unicode standard; 0 if there is none.
std::size_t sequenceSize(std::string_view text) {
    const auto byte = [text](std::size_t i) -> unsigned {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
    };
    const auto isIn = [byte](std::size_t i, unsigned first, unsigned last) {
        return byte(i) >= first && byte(i) <= last;
    };
    const unsigned lead = byte(0);
    if (lead <= 0x7F) {
        return 1;
    }
    if (isIn(0, 0xC2, 0xDF)) {
        return isIn(1, 0x80, 0xBF) ? 2 : 0;
    }
    if (isIn(0, 0xE0, 0xEF)) {
        const bool second = isIn(1, lead == 0xE0 ? 0xA0 : 0x80, lead == 0xED ? 0x9F : 0xBF);
        return second && isIn(2, 0x80, 0xBF) ? 3 : 0;
    }
    if (isIn(0, 0xF0, 0xF4)) {
        const bool second = isIn(1, lead == 0xF0 ? 0x90 : 0x80, lead == 0xF4 ? 0x8F : 0xBF);
        return second && isIn(2, 0x80, 0xBF) && isIn(3, 0x80, 0xBF) ? 4 : 0;
    }
    return 0;
}

bool isControlCharacter(std::string_view sequence) {
    const auto first = static_cast<unsigned char>(sequence[0]);
    if (sequence.size() == 1) {
        return (first < 0x20 && first != '\t') || first == 0x7F;
    }
    return (sequence.size() == 2 && first == 0xC2 &&
            static_cast<unsigned char>(sequence[1]) < 0xA0) ||
           sequence == "\u2028" || sequence == "\u2029";
}

/// Whether a text is valid UTF-8 without control characters except tab.
bool isSafe(std::string_view text) {
    while (!text.empty()) {
        const std::size_t size = sequenceSize(text);
        if (size == 0 || isControlCharacter(text.substr(0, size))) {
            return false;
        }
        text.remove_prefix(size);
    }
    return true;
}

} // namespace

std::string findEscapingError(std::string_view text, std::string_view escaped) {
    if (!isSafe(escaped)) {
        return "is not valid UTF-8 without control characters";
    }
    if (isSafe(text) && escaped != text) {
        return "differs from a text that needs no escape";
    }
    return "";
}
