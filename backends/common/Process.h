#pragma once

#include <string>

namespace ZOL::Backends {

/// The name of the program, without its folder and ".exe". A word, see escapedWord.
std::string programName();

/// The number of this process.
unsigned long processId();

/// The name of this machine. A word, see escapedWord.
std::string hostName();

} // namespace ZOL::Backends
