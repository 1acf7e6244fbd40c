#pragma once

#include <string>

namespace backendcheck {

/// The exception that is being handled: its type, and what it says of itself.
std::string thrownException();

} // namespace backendcheck
