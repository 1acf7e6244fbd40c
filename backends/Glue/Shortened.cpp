#include "Shortened.h"

#include <string_view>

namespace ZOL::Backends {

namespace {

constexpr std::string_view mark = "...";

bool continuesACharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

} // namespace

std::string shortened(std::string text, std::size_t mostBytes) {
    if (text.size() <= mostBytes) {
        return text;
    }
    std::size_t end = mostBytes - mark.size();
    while (end > 0 && continuesACharacter(text[end])) {
        --end;
    }
    return text.replace(end, std::string::npos, mark);
}

} // namespace ZOL::Backends
