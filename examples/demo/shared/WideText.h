#pragma once

#include <string>
#include <string_view>

#include "ZOL/Framework/Management/PropertyManager.h"

namespace Demo {

// A wide string has another unit type on each platform, so no one literal fits; ASCII does.

inline ZOL::Framework::Management::WideString wide(std::string_view ascii) {
    return {ascii.begin(), ascii.end()};
}

/// Units beyond ASCII become question marks.
inline std::string narrow(const ZOL::Framework::Management::WideString& text) {
    std::string ascii;
    for (const auto unit : text) {
        ascii += unit < 0x80 ? static_cast<char>(unit) : '?';
    }
    return ascii;
}

} // namespace Demo
