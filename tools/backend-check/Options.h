#pragma once

#include <string>
#include <utility>
#include <vector>

namespace backendcheck {

struct Options {
    std::string name;
    std::string folder; // where the plug-in lies; empty: where a host would find it
    std::string workFolder;
    std::string logger = "zol-check";
    std::vector<std::pair<std::string, std::string>> properties;
    int timeout = 10; // seconds
    bool json = false;
    bool strict = false;

    // For the process that tries the plug-in.
    std::string record; // the file for its findings; empty in the process that the user started
    std::string file;   // the plug-in's
    std::vector<std::string> skipped; // checks that have been made already
};

/// Ends the process, with what there is to say, if nothing is to be checked.
Options optionsOf(int count, char** arguments);

} // namespace backendcheck
