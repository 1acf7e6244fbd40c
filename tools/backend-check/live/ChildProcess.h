#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace backendcheck {

/// How a process came to its end.
struct ChildEnd {
    bool inTime = true;
    bool crashed = false;
    int code = 0;     // its exit code, if it did not crash
    std::string what; // "crashed (segmentation fault)", "ended with exit code 3"
    bool stackOverflow = false;
};

struct ChildFiles {
    std::filesystem::path output;   // its standard output
    std::filesystem::path errors;   // its standard error
    std::filesystem::path progress; // grows as long as it gets on
};

/// Runs a program to its end, or ends it, and all that it started, once the progress file has not
/// grown for so long. Throws std::runtime_error if it cannot be started.
ChildEnd runChild(const std::vector<std::string>& command, const ChildFiles& files,
                  std::chrono::milliseconds timeout);

/// Called by such a process: limits what it can take from the machine, and shows no dialogs.
void limitThisProcess();

/// Ends the process at once, without a look at what there is to tidy up.
[[noreturn]] void endNow(int code);

/// Whether a file has not grown for too long. The part of runChild that is the same everywhere.
class Watch {
public:
    Watch(std::filesystem::path progress, std::chrono::milliseconds timeout);
    bool isOver();

private:
    std::filesystem::path progress_;
    std::chrono::milliseconds timeout_;
    std::chrono::steady_clock::time_point last_;
    std::streamoff size_ = 0;
};

} // namespace backendcheck
