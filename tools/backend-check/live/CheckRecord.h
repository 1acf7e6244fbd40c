#pragma once

#include <atomic>
#include <cstdio>
#include <filesystem>
#include <mutex>
#include <string>
#include <vector>

#include "Report.h"

namespace backendcheck {

/// What the child process reports, as JSON lines in a file: the plug-in may write to the standard
/// streams or close them, and the lines written so far survive a crash.
///
/// Any thread may call its functions.
class CheckRecord {
public:
    explicit CheckRecord(const std::filesystem::path& file);
    CheckRecord(const CheckRecord&) = delete;
    CheckRecord& operator=(const CheckRecord&) = delete;

    /// What the process does from now on, and for which check.
    void beginStep(const std::string& check, const std::string& action);
    void report(const Finding& finding);

    /// All steps are done; the process is about to end.
    void done();
    bool isDone() const { return isDone_; }

    /// The tool itself ends the process early; the reason is reported already.
    void quit();

    /// Why std::terminate was called.
    void terminated(const std::string& reason);

    /// Why the process is about to crash. Takes no lock and no memory.
    /// @param reason text that JSON needs no escapes for.
    void crashed(const char* reason);

private:
    void write(const std::string& line);

    std::FILE* file_; // never closed: used until the process ends
    std::atomic<bool> isDone_{false};
    std::mutex mutex_;
};

/// A record that was read back.
struct RecordContent {
    std::vector<Finding> findings;
    std::string check; // of the last step that was begun
    std::string action;
    std::string crashReason;
    bool isDone = false;
    bool hasQuit = false;

    /// Skips a last line that is incomplete.
    static RecordContent read(const std::filesystem::path& file);
};

} // namespace backendcheck
