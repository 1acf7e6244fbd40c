#pragma once

#include <string>
#include <vector>

/// Ends the process with the exit code 3 in one of ways(), or returns for "return".
void endProcess(const std::string& way);

/// The ways in which a process may end of its own accord. In all of the first, the lines of all
/// statements that have returned are to be in the file.
struct ProcessEnds {
    std::vector<std::string> deliver;
    std::vector<std::string> lose; ///< lines that are kept for a flush
};
const ProcessEnds& processEnds();
