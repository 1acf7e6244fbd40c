#include "ZOL/Platform/NarrowString.h"

#include <cstdlib>
#include <cwchar>

namespace ZOL::Platform {

std::string narrowString(const wchar_t* text) {
    const std::size_t size = 2 * std::wcslen(text) + 2;
    std::string result(size, '\0');
    std::size_t converted = 0;
    // A failure shows as a count of 0, which is all that it is to show as.
    (void)wcstombs_s(&converted, result.data(), size, text, size);
    result.resize(converted);
    return result;
}

} // namespace ZOL::Platform
