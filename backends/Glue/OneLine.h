#pragma once

#include <string>
#include <string_view>

namespace ZOL::Backends {

/// A message stays one line: line breaks and zeros inside become visible, line breaks at its end
/// go.
std::string oneLine(std::string_view text);

} // namespace ZOL::Backends
