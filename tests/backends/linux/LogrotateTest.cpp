// RotatingFile beside the real logrotate, which moves or copies the file while threads write to it.

#include <atomic>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "ChildProcess.h"
#include "FreshFolder.h"
#include "Property.h"

using namespace ZOL::Framework::GenericLogger;
namespace fs = std::filesystem;

namespace {

constexpr int threads = 8;
constexpr int rotations = 6;

/// Logs numbered lines from eight threads until it is destroyed.
class Writers {
public:
    Writers() {
        for (int thread = 0; thread < threads; ++thread) {
            running_.emplace_back([this, thread] {
                Logger* const logger = Logger::getLogger("orders");
                for (long number = 0; !stop_; ++number) {
                    logger->info() << thread << '/' << number;
                    ++written_;
                    std::this_thread::sleep_for(std::chrono::microseconds(100));
                }
            });
        }
    }
    Writers(const Writers&) = delete;
    Writers& operator=(const Writers&) = delete;
    ~Writers() { join(); }

    /// The number of all lines.
    long join() {
        stop_ = true;
        for (std::thread& thread : running_) {
            if (thread.joinable()) {
                thread.join();
            }
        }
        return written_;
    }

private:
    std::atomic<bool> stop_ = false;
    std::atomic<long> written_ = 0;
    std::vector<std::thread> running_;
};

void runLogrotate(const char* mode) {
    std::ofstream("logrotate.conf") << fs::absolute("logs/zol.log").string() << " {\n"
                                    << "    rotate 100\n    missingok\n    " << mode << "\n}\n";
    fs::permissions("logrotate.conf", fs::perms::owner_read | fs::perms::owner_write);
    support::ChildProcess logrotate(
        {"/usr/sbin/logrotate", "--force", "--state", "state", "logrotate.conf"});
    EXPECT_EQ(logrotate.wait(), 0);
}

/// All lines in the folder. Expects each of them to be whole and to be there once.
std::set<std::string> linesInLogs() {
    std::set<std::string> lines;
    for (const auto& entry : fs::directory_iterator("logs")) {
        if (entry.path().extension() == ".lock") {
            continue;
        }
        std::istringstream text(textOf(entry.path()));
        for (std::string line; std::getline(text, line);) {
            EXPECT_EQ(line.find("INFO [orders] "), 0U) << entry.path() << ": " << line;
            EXPECT_EQ(line.find('\0'), std::string::npos) << entry.path() << " has a hole";
            EXPECT_TRUE(lines.insert(line).second) << "twice: " << line;
        }
    }
    return lines;
}

/// Returns how many lines were written, after so many runs of logrotate.
long writeBeside(const char* mode) {
    fs::create_directory("logs");
    setProperty("RotatingFile.path", "logs/zol.log");
    setProperty("RotatingFile.pattern", "%v");
    Logger::installBackend("RotatingFile");
    Logger::getLogger("orders")->info("first");
    Writers writers;
    for (int i = 0; i < rotations; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        runLogrotate(mode);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    return 1 + writers.join();
}

TEST(Logrotate, MovesTheFileAndNoLineIsLost) {
    inFreshFolder([] {
        const long written = writeBeside("nocreate");
        EXPECT_EQ(linesInLogs().size(), static_cast<std::size_t>(written));
        for (int i = 1; i <= rotations; ++i) {
            const fs::path moved = "logs/zol.log." + std::to_string(i);
            EXPECT_TRUE(fs::exists(moved) && fs::file_size(moved) > 0) << moved;
        }
        EXPECT_GT(fs::file_size("logs/zol.log"), 0U);
    });
}

TEST(Logrotate, CreatesTheNextFileAndNoLineIsLost) {
    inFreshFolder([] {
        const long written = writeBeside("create 0600");
        EXPECT_EQ(linesInLogs().size(), static_cast<std::size_t>(written));
        EXPECT_EQ(fs::status("logs/zol.log").permissions(),
                  fs::perms::owner_read | fs::perms::owner_write);
    });
}

TEST(Logrotate, CopiesAndTruncatesTheFileAndNoHoleIsLeft) {
    inFreshFolder([] {
        const long written = writeBeside("copytruncate");
        // What is written between its copy and its truncation is lost, whoever writes it.
        const std::size_t found = linesInLogs().size();
        EXPECT_LE(found, static_cast<std::size_t>(written));
        EXPECT_GT(found, static_cast<std::size_t>(written) / 2);
        EXPECT_GT(fs::file_size("logs/zol.log"), 0U);
    });
}

} // namespace
