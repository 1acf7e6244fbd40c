#pragma once

#include <array>

namespace backendcheck {

/// Every check by its name, in the order of the report.
inline constexpr std::array allChecks = {
    "file-name", "file-format", "entry-point", "exports", "framework", "runtime", "libraries",
    "symbols",   "load",        "create",      "object",  "twice",     "install", "re-entrancy",
    "channels",  "names",       "texts",       "levels",  "threads",   "time",    "leaks",
    "uninstall", "waiting",     "exceptions",  "host",    "exit"};

/// Without these, nothing of what follows can be tried.
inline constexpr std::array basicChecks = {"load", "create", "object", "install"};

} // namespace backendcheck
