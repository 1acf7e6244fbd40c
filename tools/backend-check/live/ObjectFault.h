#pragma once

#include <string>
#include <typeinfo>

namespace backendcheck {

/// Why an address that a plug-in handed out is no object of a class derived from the one given, or
/// an empty text. Calls nothing on it.
/// @param slots how many its virtual table must have at least.
std::string objectFault(const void* object, const std::type_info& base, std::size_t slots);

} // namespace backendcheck
