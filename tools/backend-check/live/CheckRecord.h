#pragma once

#include <atomic>
#include <cstdio>
#include <filesystem>
#include <mutex>
#include <string>
#include <vector>

#include "Finding.h"

namespace backendcheck {

/// What the process that tries the plug-in leaves behind, line by line, however it ends: a file,
/// since the plug-in may write to the standard streams or close them.
class CheckRecord {
public:
    explicit CheckRecord(const std::filesystem::path& file);
    CheckRecord(const CheckRecord&) = delete;
    CheckRecord& operator=(const CheckRecord&) = delete;

    /// What is done from now on, and which check it is for. Any thread may call these.
    void beginStep(const std::string& check, const std::string& doing);
    void report(const Finding& finding);

    /// Everything was tried; the process is about to end.
    void done();
    bool isDone() const { return isDone_; }

    /// The checker itself ends the process, having told why.
    void quit();

    /// For a process that is about to crash: takes no lock and no memory.
    void lastWords(const char* text);

private:
    void write(const std::string& line);

    std::FILE* file_; // as long as the process
    std::atomic<bool> isDone_{false};
    std::mutex mutex_;
};

/// The same, read back.
struct RecordContent {
    std::vector<Finding> findings;
    std::string check; // the last one begun
    std::string doing;
    std::string lastWords;
    bool isDone = false;
    bool hasQuit = false;

    static RecordContent read(const std::filesystem::path& file);
};

} // namespace backendcheck
