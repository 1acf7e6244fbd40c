#pragma once

#include <cstddef>

namespace Demo {

constexpr const char* positionName = "demo.position";

/// Where the reading stands.
struct Position {
    std::size_t line = 0; ///< number of the line that was read last
};

/// The one position of the process, a named object: the reader moves it, the auditor cites it. The
/// first to ask makes it, and keeps it for as long as its module stays loaded.
Position& position();

/// How many positions this side, host or module, has made.
int positionsMade();

} // namespace Demo
