#pragma once

#include <string>
#include <typeinfo>

namespace ZOL::Framework::GenericLogger {

/// "class" and the full qualified name of a class, on every compiler. Throws std::bad_alloc.
std::string displayName(const std::type_info& type);

} // namespace ZOL::Framework::GenericLogger
