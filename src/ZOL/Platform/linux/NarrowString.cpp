#include "ZOL/Platform/NarrowString.h"

namespace ZOL::Platform {

std::string narrowString(const char16_t* text) {
    constexpr char16_t lastByte = 0xFF;

    std::string result;
    for (; *text != 0; ++text) {
        if (*text > lastByte) {
            return {};
        }
        result += static_cast<char>(*text);
    }
    result += '\0';
    return result;
}

} // namespace ZOL::Platform
