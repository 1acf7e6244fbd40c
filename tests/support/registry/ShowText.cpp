#include "ShowText.h"

namespace support {

std::string printable(const std::string& bytes) {
    constexpr const char* digits = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        if (' ' <= byte && byte <= '~') {
            text += byte;
        } else {
            const auto number = static_cast<unsigned char>(byte);
            text += {'<', digits[number / 16], digits[number % 16], '>'};
        }
    }
    return text;
}

} // namespace support
