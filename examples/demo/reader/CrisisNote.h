#pragma once

#include <string>

namespace Demo {

/// Leaves a line in the crisis log, and tells in a few words whether it is there. A crisis log that
/// cannot be opened is no reason to throw: the message is what matters.
std::string noteInCrisisLog(const std::string& message);

} // namespace Demo
