#pragma once

#include <array>
#include <filesystem>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace backendcheck {

/// Every check by its name, in the order of the report.
inline constexpr std::array allChecks = {
    "file-name", "file-format", "entry-point", "exports",    "framework", "runtime", "libraries",
    "symbols",   "load",        "create",      "object",     "twice",     "install", "re-entrancy",
    "channels",  "names",       "texts",       "levels",     "threads",   "time",    "leaks",
    "uninstall", "waiting",     "heap",        "exceptions", "host",      "exit"};

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

/// The findings about one plug-in.
class Report {
public:
    void add(Finding finding) { findings_.push_back(std::move(finding)); }

    /// Adds what a process of the plug-in wrote to standard error; only the first lines are kept.
    void addErrorOutput(const std::string& output);

    /// Sorts the findings and adds every check without a result as not reached.
    /// @param strict turns notes into faults.
    void complete(bool strict);

    bool isWrong() const;

    void writeLines(std::ostream& out, const std::string& name) const;
    void writeJson(std::ostream& out, const std::string& name,
                   const std::filesystem::path& file) const;

private:
    std::ptrdiff_t count(Result result) const;

    std::vector<Finding> findings_;
    std::vector<std::string> errors_; // lines of standard error
};

} // namespace backendcheck
