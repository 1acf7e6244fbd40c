#include "live/Supervisor.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "Finding.h"
#include "file/LibrarySearch.h"
#include "live/CheckRecord.h"
#include "live/ChildProcess.h"
#include "live/CrashHandler.h"
#include "steps/Steps.h"

namespace backendcheck {

namespace fs = std::filesystem;

namespace {

/// An empty folder that goes with the object.
class ScratchFolder {
public:
    ScratchFolder() {
        std::random_device random;
        do {
            path_ = fs::temp_directory_path() / ("zol-backend-check-" + std::to_string(random()));
        } while (!fs::create_directories(path_));
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        std::error_code error;
        fs::remove_all(path_, error);
    }

    const fs::path& path() const { return path_; }

private:
    fs::path path_;
};

// Without these, nothing of what follows can be tried.
constexpr std::array basicChecks = {"load", "create", "object", "install"};

bool isBasic(const std::string& check) {
    return std::find(basicChecks.begin(), basicChecks.end(), check) != basicChecks.end();
}

std::vector<std::string> commandFor(const Options& options, const fs::path& file,
                                    const fs::path& record, const fs::path& folder,
                                    const std::set<std::string>& made) {
    std::vector<std::string> command = {
        programFile().string(),       options.name,
        "--file=" + file.string(),    "--record=" + record.string(),
        "--logger=" + options.logger, "--folder=" + folder.string()};
    for (const auto& [name, value] : options.properties) {
        command.push_back(std::string("--set=").append(name).append("=").append(value));
    }
    for (const std::string& check : made) {
        command.push_back("--skip=" + check);
    }
    return command;
}

/// What a library had to say before it ended the process.
std::string complaintIn(const fs::path& errors) {
    constexpr std::array words = {"Assertion", "assertion", "pure virtual", "double free",
                                  "corrupt",   "free():",   "malloc",       "runtime error"};
    std::ifstream stream(errors);
    std::string found;
    for (std::string line; std::getline(stream, line);) {
        for (const char* const word : words) {
            if (line.find(word) != std::string::npos) {
                found = line;
            }
        }
    }
    constexpr std::size_t longest = 300;
    return found.size() > longest ? std::string() : found;
}

/// Whether the record has not grown for the timeout.
class StallDetector {
public:
    StallDetector(fs::path record, std::chrono::seconds timeout)
        : record_(std::move(record)),
          timeout_(timeout),
          lastGrowth_(std::chrono::steady_clock::now()) {}

    bool operator()() {
        // Opened each time: Windows tells nobody else the size of a file that is being written.
        std::ifstream file(record_, std::ios_base::binary | std::ios_base::ate);
        const std::streamoff size = file.is_open() ? std::streamoff(file.tellg()) : 0;
        const auto now = std::chrono::steady_clock::now();
        if (size != size_) {
            size_ = size;
            lastGrowth_ = now;
        }
        return now - lastGrowth_ > timeout_;
    }

private:
    fs::path record_;
    std::chrono::seconds timeout_;
    std::chrono::steady_clock::time_point lastGrowth_;
    std::streamoff size_ = 0;
};

std::string reasonFor(const ChildEnd& end, const RecordContent& record, int timeout) {
    if (!end.inTime) {
        return record.action + " did not come back within " + std::to_string(timeout) +
               " s\nif it waits for a thread of its own: that one must not log, for the lock is "
               "held meanwhile, and on Windows it is gone at the end of the process\nif it has a "
               "lock of its own: it must not hold that while it logs";
    }
    if (end.crashed || !record.crashReason.empty()) {
        return "the process " + end.what + " in " + record.action;
    }
    if (record.isDone) {
        return "the process " + end.what + " in place of 0, in " + record.action;
    }
    return "it ended the process with exit code " + std::to_string(end.code) + " in " +
           record.action;
}

class LiveChecks {
public:
    LiveChecks(const Options& options, const fs::path& file, Report& report)
        : options_(options),
          file_(file),
          report_(report),
          folder_(options.workFolder.empty() ? scratch_.path() / "work"
                                             : fs::absolute(options.workFolder)) {
        fs::create_directories(folder_);
    }

    void run() {
        constexpr int most = 12; // processes
        for (int i = 0; i < most && runOnce(i); ++i) {
        }
        if (wroteOutput_) {
            report_.add({"host", Result::Note,
                         "it writes to standard output, where the host's own results may go"});
        }
    }

private:
    /// Whether there is something left to try.
    bool runOnce(int number) {
        const std::string prefix = std::to_string(number) + ".";
        const fs::path recordFile = scratch_.path() / (prefix + "record");
        const fs::path output = scratch_.path() / (prefix + "out");
        const fs::path errors = scratch_.path() / (prefix + "err");
        const ChildEnd end =
            runChild(commandFor(options_, file_, recordFile, folder_, made_), output, errors,
                     StallDetector(recordFile, std::chrono::seconds(options_.timeout)));
        const RecordContent record = RecordContent::read(recordFile);
        std::error_code error;
        wroteOutput_ |= fs::file_size(output, error) > 0 && !error;
        const bool isOk = take(record, end, errors);
        for (const fs::path& file : {output, errors}) {
            fs::remove(file, error);
        }
        return !isOk;
    }

    /// Whether there is no more to try.
    bool take(const RecordContent& record, const ChildEnd& end, const fs::path& errors) {
        std::set<std::string> found;
        for (const Finding& finding : record.findings) {
            if (made_.count(finding.check) == 0) {
                report_.add(finding);
                found.insert(finding.check);
            }
        }
        made_.insert(found.begin(), found.end());
        if (end.inTime && !end.crashed && record.isDone && end.code == exitGood) {
            if (made_.count("exit") == 0) {
                report_.add(
                    record.action == endOfProcess
                        ? Finding{"exit", Result::Wrong,
                                  "it cut the end of the process short: the host's own "
                                  "handlers for that moment were not called"}
                        : Finding{"exit", Result::Ok, "it takes messages while the process ends"});
            }
            return true;
        }
        if (record.hasQuit) {
            return found.count("re-entrancy") == 0 || !made_.insert(record.check).second;
        }
        const bool overflow = end.stackOverflow || record.crashReason == stackOverflow;
        const std::string check = overflow ? "re-entrancy" : record.check;
        std::string text = reasonFor(end, record, options_.timeout);
        if (overflow) {
            text += "\nthe stack overflowed: it logs in answer to its own messages, or calls "
                    "itself without end";
        } else if (!record.crashReason.empty()) {
            text += "\n" + record.crashReason;
        }
        const std::string complaint = complaintIn(errors);
        if (!complaint.empty()) {
            text += "\n" + complaint;
        }
        if (made_.count(check) != 0 && check != record.check) {
            return true;
        }
        const bool isNew = made_.insert(check).second;
        if (isNew) {
            report_.add({check.empty() ? "load" : check, Result::Wrong, text});
        }
        return !isNew || isBasic(check) || check.empty() || record.isDone;
    }

    const Options& options_;
    const fs::path& file_;
    Report& report_;
    ScratchFolder scratch_;
    fs::path folder_;            // the current one of the plug-in
    std::set<std::string> made_; // checks that have a result
    bool wroteOutput_ = false;
};

} // namespace

void checkLive(const Options& options, const fs::path& file, Report& report) {
    const char* const before = std::getenv(searchVariable());
    std::string folders = file.parent_path().string();
    // From the process's own folder, a relative one would lead elsewhere.
    std::istringstream list(before != nullptr ? before : "");
    for (std::string folder; std::getline(list, folder, searchSeparator());) {
        folders += searchSeparator() + fs::absolute(folder).string();
    }
    setVariable(searchVariable(), folders);
    poisonFreedMemory();
    LiveChecks(options, file, report).run();
}

} // namespace backendcheck
