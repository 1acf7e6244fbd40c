#include <chrono>
#include <fstream>
#include <random>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "Checks.h"
#include "Text.h"
#include "file/LibraryFile.h"
#include "live/CheckRecord.h"
#include "live/ChildProcess.h"
#include "live/CrashHandler.h"
#include "steps/Steps.h"

namespace backendcheck {

namespace fs = std::filesystem;

namespace {

/// Whether nothing else can be tried without this check.
bool isBasic(const std::string& check) {
    return check == "load" || check == "create" || check == "object" || check == "install";
}

/// An empty folder that is removed with the object.
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

/// Whether the record has not grown for the timeout.
class StallDetector {
public:
    StallDetector(fs::path record, std::chrono::seconds timeout)
        : record_(std::move(record)), timeout_(timeout), lastGrowth_(Clock::now()) {}

    bool operator()() {
        // Opened each time: Windows shows the size of a file that is being written to no one else.
        std::ifstream file(record_, std::ios_base::binary | std::ios_base::ate);
        const std::streamoff size = file.is_open() ? std::streamoff(file.tellg()) : 0;
        if (size != size_) {
            size_ = size;
            lastGrowth_ = Clock::now();
        }
        return Clock::now() - lastGrowth_ > timeout_;
    }

private:
    using Clock = std::chrono::steady_clock;
    fs::path record_;
    std::chrono::seconds timeout_;
    Clock::time_point lastGrowth_;
    std::streamoff size_ = 0;
};

/// The beginning of a file; a plug-in may write very much.
std::string beginningOf(const fs::path& file) {
    constexpr std::size_t maxSize = 65536;
    std::string content(maxSize, '\0');
    std::ifstream stream(file, std::ios_base::binary);
    stream.read(content.data(), static_cast<std::streamsize>(maxSize));
    content.resize(static_cast<std::size_t>(stream.gcount()));
    return content;
}

/// The line of standard error in which a runtime library says why it aborts the process.
std::string abortMessage(const std::string& errors) {
    const std::regex abortLine("[Aa]ssertion|pure virtual|double free|corrupt|free\\(\\):|malloc|"
                               "runtime error");
    std::istringstream stream(errors);
    std::string found;
    for (std::string line; std::getline(stream, line);) {
        if (std::regex_search(line, abortLine)) {
            found = "\n" + printable(line);
        }
    }
    return found;
}

std::string describe(const ChildEnd& end, const RecordContent& record, int timeout) {
    if (!end.inTime) {
        return record.action + " did not return within " + std::to_string(timeout) +
               " s\nif it waits for a thread of its own: that thread must not log, because it "
               "waits for the logging lock; on Windows it does not run any more at the end of the "
               "process\nif it has a lock of its own: it must not hold it while it logs";
    }
    const bool crashed = !end.crash.empty();
    const std::string what = crashed ? "crashed (" + end.crash + ")"
                                     : "ended with exit code " + std::to_string(end.code);
    const std::string where = " in " + record.action;
    if (crashed || !record.crashReason.empty()) {
        return "the process " + what + where;
    }
    return record.isDone
               ? "the process " + what + " in place of 0," + where
               : "it ended the process with exit code " + std::to_string(end.code) + where;
}

class Supervisor {
public:
    Supervisor(const Options& options, const fs::path& file, Report& report)
        : options_(options),
          file_(file),
          report_(report),
          workFolder_(options.workFolder.empty() ? scratch_.path() / "work"
                                                 : fs::absolute(fs::u8path(options.workFolder))) {
        fs::create_directories(workFolder_);
    }

    void run() {
        constexpr int maxProcesses = 12;
        for (int i = 0; i < maxProcesses && runOnce(i); ++i) {
        }
        if (wroteOutput_) {
            report_.add(
                {"host", Result::Note, "it writes to standard output, which belongs to the host"});
        }
    }

private:
    /// Whether another process has something left to try.
    bool runOnce(int number) {
        const fs::path folder = scratch_.path() / std::to_string(number);
        fs::create_directory(folder);
        const fs::path recordFile = folder / "record";
        const fs::path output = folder / "out";
        const fs::path errors = folder / "err";
        const ChildEnd end =
            runChild(command(recordFile), output, errors,
                     StallDetector(recordFile, std::chrono::seconds(options_.timeout)));
        const RecordContent record = RecordContent::read(recordFile);
        std::error_code error;
        wroteOutput_ |= fs::file_size(output, error) > 0 && !error;
        const std::string errorOutput = beginningOf(errors);
        report_.addErrorOutput(errorOutput);
        const bool hasMore = take(record, end, errorOutput);
        fs::remove_all(folder, error);
        return hasMore;
    }

    std::vector<std::string> command(const fs::path& record) const {
        std::vector<std::string> command = {
            programFile().u8string(),      options_.name,
            "--file=" + file_.u8string(),  "--record=" + record.u8string(),
            "--logger=" + options_.logger, "--folder=" + workFolder_.u8string()};
        for (const auto& [name, value] : options_.properties) {
            command.push_back(std::string("--set=").append(name).append("=").append(value));
        }
        for (const std::string& check : made_) {
            command.push_back("--skip=" + check);
        }
        return command;
    }

    /// Takes the results of one process. Whether another one has something left to try.
    bool take(const RecordContent& record, const ChildEnd& end, const std::string& errors) {
        std::set<std::string> found;
        for (const Finding& finding : record.findings) {
            if (made_.count(finding.check) == 0) {
                report_.add(finding);
                found.insert(finding.check);
            }
        }
        made_.insert(found.begin(), found.end());
        if (end.inTime && end.crash.empty() && record.isDone && end.code == exitGood) {
            takeGoodEnd(record);
            return false;
        }
        if (record.hasQuit) {
            return found.count("re-entrancy") != 0 && made_.insert(record.check).second;
        }
        return takeBadEnd(record, end, errors);
    }

    void takeGoodEnd(const RecordContent& record) {
        if (made_.count("exit") != 0) {
            return;
        }
        if (record.action == endOfProcess) {
            report_.add({"exit", Result::Wrong,
                         "it ended the process before the host's own atexit handlers were called"});
        } else {
            report_.add({"exit", Result::Ok, "it takes messages while the process ends"});
        }
    }

    /// The check of the last step found the fault that ended the process.
    bool takeBadEnd(const RecordContent& record, const ChildEnd& end, const std::string& errors) {
        const bool overflow = end.stackOverflow || record.crashReason == stackOverflow;
        const std::string check = overflow               ? "re-entrancy"
                                  : record.check.empty() ? "load"
                                                         : record.check;
        if (!made_.insert(check).second) {
            return false;
        }
        std::string text = describe(end, record, options_.timeout);
        if (overflow) {
            text += "\nthe stack overflowed: it logs for each of its own messages, or calls "
                    "itself without end";
        } else if (!record.crashReason.empty()) {
            text += "\n" + record.crashReason;
        }
        report_.add({check, Result::Wrong, text + abortMessage(errors)});
        return !isBasic(check) && !record.isDone;
    }

    const Options& options_;
    const fs::path& file_;
    Report& report_;
    ScratchFolder scratch_;
    fs::path workFolder_;        // the current one of the plug-in
    std::set<std::string> made_; // checks that have a result
    bool wroteOutput_ = false;
};

} // namespace

void checkLive(const Options& options, const fs::path& file, Report& report) {
    std::vector<fs::path> folders = searchPath();
    folders.insert(folders.begin(), file.parent_path());
    setSearchPath(folders);
    Supervisor(options, file, report).run();
}

} // namespace backendcheck
