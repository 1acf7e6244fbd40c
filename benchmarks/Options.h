#pragma once

#include <string>

namespace benchmarks {

/// What a driver is told: [--only REGEX] [--repetitions NUMBER] [--milliseconds NUMBER].
struct Options {
    std::string only;      ///< of the names of works; all if empty
    int repetitions = 9;   ///< of each row
    int milliseconds = 20; ///< that each repetition takes, or a little longer
};

/// Throws std::runtime_error for anything else.
Options readOptions(int count, const char* const* arguments);

} // namespace benchmarks
