#pragma once

#include <cstddef>
#include <string>

namespace ZOL::Backends {

/// The text, or as much of its beginning as fits with "..." at its end. Never ends within a
/// character of UTF-8.
std::string shortened(std::string text, std::size_t mostBytes);

} // namespace ZOL::Backends
