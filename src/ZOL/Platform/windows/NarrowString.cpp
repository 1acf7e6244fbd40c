#include "ZOL/Platform/NarrowString.h"

#include <cstdlib>
#include <cwchar>

namespace ZOL::Platform {

std::string narrowString(const wchar_t* text) {
    constexpr std::size_t maxBytesPerUnit = 2;
    const std::size_t size = maxBytesPerUnit * (std::wcslen(text) + 1); // with the terminating zero
    std::string result(size, '\0');
    std::size_t converted = 0;
    // On failure the count is 0 and the result is empty.
    (void)wcstombs_s(&converted, result.data(), size, text, size);
    result.resize(converted);
    return result;
}

} // namespace ZOL::Platform
