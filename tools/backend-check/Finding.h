#pragma once

#include <array>
#include <string>

namespace backendcheck {

/// Every check by its name, in the order of the report.
inline constexpr std::array allChecks = {
    "file-name", "file-format", "entry-point", "exports", "framework", "runtime", "libraries",
    "symbols",   "load",        "create",      "object",  "twice",     "install", "re-entrancy",
    "channels",  "names",       "texts",       "levels",  "threads",   "time",    "leaks",
    "uninstall", "waiting",     "exceptions",  "host",    "exit"};

enum class Result { Ok, Note, Wrong, NotReached };

/// The result of one check.
struct Finding {
    std::string check;
    Result result;
    std::string text;
};

constexpr int exitGood = 0;
constexpr int exitWrong = 1;
constexpr int exitCannotCheck = 2;

} // namespace backendcheck
