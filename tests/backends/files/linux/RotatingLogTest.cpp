// What a RotatingLog does with processes, locks and full file systems of Linux.

#include "files/RotatingLog.h"

#include <atomic>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include "FreshFolder.h"
#include "RotatedFiles.h"
#include "linux/PrivateMounts.h"

using namespace ZOL::Backends;
using namespace std::chrono_literals;
namespace fs = std::filesystem;

namespace {

using Texts = std::vector<std::string>;
using Clock = RotatingLog::Clock;

RotatingLogSettings withSize(std::uint64_t maxBytes) {
    RotatingLogSettings settings;
    settings.path = "zol.log";
    settings.maxBytes = maxBytes;
    return settings;
}

/// Runs the body in a child process after fork, and waits for it.
void inForkedChild(const std::function<void()>& body) {
    const pid_t child = fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
        body();
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0) << "see the output of the child process";
}

TEST(RotatingLogProcesses, WriteToTheirParentsFileAndDoNotRenameIt) {
    inFreshFolder([] {
        const Clock::time_point now = Clock::now();
        RotatingLog log("Test", withSize(2));
        log.write("1\n", now);
        inForkedChild([&] {
            log.write("2\n", now + 1s);
            log.write("3\n", now + 3s);
        });
        EXPECT_EQ(textOf("zol.log"), "1\n2\n3\n");
        log.write("4\n", now + 4s);
        EXPECT_EQ(rotatedTexts("zol.log"), Texts{"1\n2\n3\n"});
        EXPECT_EQ(textOf("zol.log"), "4\n");
    });
}

TEST(RotatingLogProcesses, FollowTheirParentsRotation) {
    inFreshFolder([] {
        const Clock::time_point now = Clock::now();
        RotatingLog log("Test", withSize(4));
        log.write("1\n", now);
        int go[2] = {};
        ASSERT_EQ(pipe(go), 0);
        const pid_t child = fork();
        if (child == 0) {
            char byte = 0;
            const bool isWoken = read(go[0], &byte, 1) == 1;
            log.write("child\n", now + 200ms);
            _exit(isWoken ? 0 : 1);
        }
        log.write("2\n", now);
        log.write("3\n", now);
        ASSERT_EQ(write(go[1], "x", 1), 1);
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
        EXPECT_EQ(rotatedTexts("zol.log"), Texts{"1\n2\n"});
        EXPECT_EQ(textOf("zol.log"), "3\nchild\n");
    });
}

TEST(RotatingLogProcesses, RotateWhenTheirParentHasEnded) {
    inFreshFolder([] {
        const Clock::time_point now = Clock::now();
        int ended[2] = {};
        ASSERT_EQ(pipe(ended), 0);
        const pid_t parent = fork();
        if (parent == 0) {
            close(ended[0]);
            RotatingLog log("Test", withSize(2));
            log.write("1\n", now);
            if (fork() == 0) {
                while (getppid() == parent || kill(getppid(), 0) != 0) {
                    std::this_thread::sleep_for(1ms);
                }
                std::this_thread::sleep_for(50ms); // until the parent has gone
                log.write("2\n", now + 2s);
                _exit(write(ended[1], "x", 1) == 1 ? 0 : 1);
            }
            std::this_thread::sleep_for(20ms);
            raise(SIGKILL);
        }
        close(ended[1]);
        waitpid(parent, nullptr, 0);
        char byte = 0;
        ASSERT_EQ(read(ended[0], &byte, 1), 1);
        EXPECT_EQ(rotatedTexts("zol.log"), Texts{"1\n"});
        EXPECT_EQ(textOf("zol.log"), "2\n");
    });
}

TEST(RotatingLogProcesses, AreRefusedIfTheyAreNoChildren) {
    inFreshFolder([] {
        RotatingLog log("Test", withSize(0));
        log.write("1\n", Clock::now());
        inForkedChild([] {
            RotatingLog second("Test", withSize(0));
            EXPECT_THROW(second.write("2\n", Clock::now()), LogFileError);
        });
        EXPECT_EQ(textOf("zol.log"), "1\n");
    });
}

TEST(RotatingLog, WritesWithoutALockIfThereCanBeNone) {
    inFreshFolder([] {
        fs::create_directory("zol.log.lock");
        testing::internal::CaptureStderr();
        RotatingLog log("Test", withSize(2));
        for (const char* line : {"1\n", "2\n", "3\n"}) {
            log.write(line, Clock::now());
        }
        EXPECT_EQ(
            testing::internal::GetCapturedStderr(),
            "ZOL back end Test: cannot open zol.log.lock: Is a directory; another process that "
            "writes to the log is not noticed\n");
        EXPECT_EQ(rotatedTexts("zol.log"), (Texts{"1\n", "2\n"}));
        EXPECT_EQ(textOf("zol.log"), "3\n");
    });
}

TEST(RotatingLog, WritesOnIfThereIsNoRoomForANewFile) {
    inFreshFolder([] {
        fs::create_directory("disk");
        support::leaveTheMachinesMounts();
        support::mountMemory("disk", "size=64k,nr_inodes=4"); // the folder, the log and its lock
        RotatingLogSettings settings = withSize(2);
        settings.path = "disk/zol.log";
        testing::internal::CaptureStderr();
        const Clock::time_point now = Clock::now();
        RotatingLog log("Test", settings);
        log.write("1\n", now);
        std::ofstream("disk/filler") << "";
        log.write("2\n", now);
        log.write("3\n", now + 2s);
        EXPECT_EQ(textOf("disk/zol.log"), "1\n2\n3\n");
        EXPECT_EQ(filesRotatedFrom("disk/zol.log").size(), 0U);
        fs::remove("disk/filler");
        log.write("4\n", now + 3s);
        EXPECT_EQ(rotatedTexts("disk/zol.log"), Texts{"1\n2\n3\n"});
        EXPECT_EQ(textOf("disk/zol.log"), "4\n");
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "ZOL back end Test: cannot begin a new file for disk/zol.log: cannot open "
                  "disk/zol.log: No space left on device; writing on to the old one\n");
    });
}

TEST(RotatingLog, OpensItsFileAgainIfTheHostClosesTheDescriptor) {
    inFreshFolder([] {
        RotatingLog log("Test", withSize(0));
        const Clock::time_point now = Clock::now();
        log.write("1\n", now);
        for (int descriptor = 3; descriptor < 100; ++descriptor) {
            close(descriptor);
        }
        log.write("2\n", now);
        EXPECT_EQ(textOf("zol.log"), "1\n2\n");
    });
}

// ---- A writer that is killed at a random instant

/// Numbers of lines that a process has written; in memory that outlives it.
struct Progress {
    std::atomic<long> written{0};
};

/// Writes numbered lines from the one after the last until it is killed.
[[noreturn]] void writeUntilKilled(Progress& progress) {
    RotatingLogSettings settings = withSize(1000);
    settings.clock = RotationClock(0, 0);
    RotatingLog log("Test", settings);
    for (;;) {
        const long number = progress.written + 1;
        log.write("line " + std::to_string(number) + "\n", Clock::now());
        progress.written = number;
    }
}

TEST(RotatingLog, LosesNoLineAndWritesNoneTwiceIfItsProcessIsKilled) {
    inFreshFolder([] {
        void* const memory = mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE,
                                  MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        ASSERT_NE(memory, MAP_FAILED);
        auto* const progress = new (memory) Progress;
        std::minstd_rand random(std::random_device{}());
        // A busy machine may need more of them until enough is written.
        constexpr int minKills = 40;
        constexpr int maxKills = 4000;
        constexpr long minLines = 2000;
        for (int i = 0; i < maxKills && (i < minKills || progress->written < minLines); ++i) {
            const pid_t child = fork();
            ASSERT_NE(child, -1);
            if (child == 0) {
                writeUntilKilled(*progress);
            }
            std::this_thread::sleep_for(std::chrono::microseconds(random() % 8000));
            kill(child, SIGKILL);
            waitpid(child, nullptr, 0);
            // A line that was written, and not yet counted, when the process was killed.
            const long next = progress->written + 1;
            std::string last;
            if (fs::exists("zol.log") && fs::file_size("zol.log") > 0) {
                last = textOf("zol.log");
            } else if (const auto files = filesRotatedFrom("zol.log"); !files.empty()) {
                last = textOf(files.back());
            }
            if (last.find("line " + std::to_string(next) + "\n") != std::string::npos) {
                progress->written = next;
            }
        }
        std::string expected;
        for (long i = 1; i <= progress->written; ++i) {
            expected += "line " + std::to_string(i) + "\n";
        }
        std::string text;
        for (const std::string& rotated : rotatedTexts("zol.log")) {
            text += rotated;
        }
        text += fs::exists("zol.log") ? textOf("zol.log") : "";
        EXPECT_GT(filesRotatedFrom("zol.log").size(), 10U);
        EXPECT_TRUE(text == expected) << "of " << progress->written << " lines, the files hold "
                                      << std::count(text.begin(), text.end(), '\n');
        munmap(memory, sizeof(Progress));
    });
}

} // namespace
