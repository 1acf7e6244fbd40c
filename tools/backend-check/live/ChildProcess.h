#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace backendcheck {

/// How a process ended.
struct ChildEnd {
    bool inTime = true;
    int code = 0;      // its exit code, if it did not crash
    std::string crash; // such as "segmentation fault"; empty if it did not crash
    bool stackOverflow = false;
};

/// Runs a program with its standard streams in files. Kills it once isOverdue, which is asked
/// every few milliseconds; kills all that it started in any case. Throws std::runtime_error if it
/// cannot be started.
ChildEnd runChild(const std::vector<std::string>& command, const std::filesystem::path& output,
                  const std::filesystem::path& errors, const std::function<bool()>& isOverdue);

} // namespace backendcheck
