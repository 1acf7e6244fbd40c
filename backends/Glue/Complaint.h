#pragma once

#include <string_view>

namespace ZOL::Backends {

/// Tells whoever watches standard error what is wrong with a back end, in one line. Never throws.
void complain(std::string_view backend, std::string_view what) noexcept;

} // namespace ZOL::Backends
