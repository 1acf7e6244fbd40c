#pragma once

#include <string>
#include <utility>
#include <vector>

namespace backendcheck {

struct Options {
    std::string name;
    std::string folder; // where the plug-in is; empty: where a host would find it
    std::string workFolder;
    std::string logger = "zol-check";
    std::vector<std::pair<std::string, std::string>> properties;
    int timeout = 10; // seconds
    bool json = false;
    bool strict = false;

    // For the child process that loads the plug-in.
    std::string record;               // the file for its findings; empty in the supervisor
    std::string file;                 // the plug-in's
    std::vector<std::string> skipped; // checks that have a result already
};

/// Ends the process after --help and --version, and after an error in the arguments.
Options optionsOf(std::vector<std::string> arguments);

} // namespace backendcheck
