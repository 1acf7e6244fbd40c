#pragma once

#include <string>

#include "ZOL/Framework/Management/PropertyManager.h"

namespace ZOL::Platform {

/// The zero-terminated text by the C runtime's locale: in the "C" locale, where every program
/// starts, units up to 255 become the byte of the same value. The result has the terminating zero
/// in it; it is empty if a unit has no byte.
std::string narrowString(const Framework::Management::WideString::value_type* text);

} // namespace ZOL::Platform
