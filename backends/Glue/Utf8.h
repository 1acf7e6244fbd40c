#pragma once

#include <string>

#include "ZOL/Framework/Management/PropertyManager.h"

namespace ZOL::Backends {

/// The text of a property in UTF-8. Half of a pair, which is no character, becomes U+FFFD.
std::string utf8(const Framework::Management::WideString& text);

} // namespace ZOL::Backends
