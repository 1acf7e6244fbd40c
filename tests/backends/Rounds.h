#pragma once

#include <algorithm>
#include <string>

#include "ChildProcess.h"

/// How often a test repeats what happens at random: so often, or more often if the environment
/// variable ZOL_TEST_ROUNDS says so.
inline int rounds(int usual) {
    const std::string asked = support::ChildProcess::environment("ZOL_TEST_ROUNDS");
    return asked.empty() ? usual : std::max(usual, std::stoi(asked));
}
