#pragma once

#include <string>

namespace support {

/// With "<41>" in place of each byte that is no printable character.
std::string printable(const std::string& bytes);

} // namespace support
