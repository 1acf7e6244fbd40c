#pragma once

#include <string>

#include "ZOL/Framework/Management/PropertyManager.h"

namespace ZOL::Platform {

/// Converts a zero-terminated text to bytes by the C runtime's locale. In the "C" locale, in which
/// every program starts, units up to 255 become the byte of the same value. The result includes the
/// terminating zero. It is empty if a unit cannot be converted.
std::string narrowString(const Framework::Management::WideString::value_type* text);

} // namespace ZOL::Platform
