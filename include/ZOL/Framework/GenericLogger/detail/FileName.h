#pragma once

#include <cstddef>
#include <string_view>

namespace ZOL::Framework::GenericLogger::detail {

/// Returns the path, as in __FILE__, without its folders.
constexpr std::string_view fileName(std::string_view path) {
    const std::size_t separator = path.find_last_of("/\\");
    return separator == std::string_view::npos ? path : path.substr(separator + 1);
}

} // namespace ZOL::Framework::GenericLogger::detail
