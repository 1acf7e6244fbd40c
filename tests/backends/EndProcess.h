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
    /// How many of a hundred ends may hang. A thread that Wine kills within one of its own
    /// functions takes a lock of Wine with it, for which the last thread may wait for ever.
    int maxHangsPerHundred;
};
const ProcessEnds& processEnds();
