#include "files/BufferedLog.h"

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "FreshFolder.h"
#include "WaitFor.h"
#include "linux/PrivateMounts.h"

using namespace ZOL::Backends;
using namespace std::chrono_literals;
namespace fs = std::filesystem;

namespace {

using Clock = BufferedLog::Clock;

std::shared_ptr<BufferedLog> makeLog(std::chrono::milliseconds interval,
                                     const char* path = "zol.log") {
    RotatingLogSettings settings;
    settings.path = path;
    settings.flush.interval = interval;
    return std::make_shared<BufferedLog>("Test", settings);
}

void write(BufferedLog& log, const std::string& line) {
    log.write(line + "\n", 0, Clock::now());
}

/// Writes lines until one is kept. Returns their number.
std::ptrdiff_t writeUntilOneIsKept(BufferedLog& log, const fs::path& path = "zol.log") {
    write(log, "start");
    std::ptrdiff_t lines = 1;
    EXPECT_TRUE(isSoon([&] {
        const auto before = fs::file_size(path);
        write(log, "start");
        ++lines;
        return fs::file_size(path) == before;
    }));
    return lines;
}

/// What a child process writes after fork. It ends without a check for leaks: what another thread
/// may have held is left alone in it.
void inChild(const std::function<void()>& body) {
    const pid_t child = fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
        alarm(20); // a lock of the parent is awaited in vain
        body();
        _exit(0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

std::size_t count(const std::string& text, const std::string& line) {
    std::size_t result = 0;
    for (std::size_t at = 0; (at = text.find(line + "\n", at)) != std::string::npos; ++at) {
        ++result;
    }
    return result;
}

TEST(BufferedLogInAChildProcess, WritesItsOwnLinesOnly) {
    inFreshFolder([] {
        const auto log = makeLog(1h);
        writeUntilOneIsKept(*log);
        write(*log, "of the parent");
        inChild([&] { log->finish(); });
        inChild([&] {
            write(*log, "of the child");
            log->finish();
        });
        EXPECT_EQ(count(textOf("zol.log"), "of the parent"), 0U);
        EXPECT_EQ(count(textOf("zol.log"), "of the child"), 1U);
        log->close();
        EXPECT_EQ(count(textOf("zol.log"), "of the parent"), 1U);
    });
}

TEST(BufferedLogInAChildProcess, HasAWorkerOfItsOwn) {
    inFreshFolder([] {
        const auto log = makeLog(5ms);
        writeUntilOneIsKept(*log);
        inChild([&] {
            for (int i = 0; i < 100; ++i) {
                write(*log, "x");
            }
            if (!isSoon([] { return count(textOf("zol.log"), "x") >= 100; })) {
                _exit(1);
            }
        });
        EXPECT_EQ(count(textOf("zol.log"), "x"), 100U);
        log->close();
    });
}

TEST(BufferedLogInAChildProcess, MayBeForkedWhileTheWorkerWrites) {
    inFreshFolder([] {
        const auto log = makeLog(1ms);
        int number = 0;
        for (int i = 0; i < 100; ++i) {
            const auto end = std::chrono::steady_clock::now() + std::chrono::microseconds(i * 20);
            do {
                write(*log, "parent " + std::to_string(number++));
            } while (std::chrono::steady_clock::now() < end);
            inChild([&] {
                write(*log, "child " + std::to_string(i));
                log->finish();
            });
        }
        log->close();
        const std::string text = textOf("zol.log");
        std::istringstream lines(text);
        int nextOfParent = 0;
        int children = 0;
        for (std::string line; std::getline(lines, line);) {
            if (line == "parent " + std::to_string(nextOfParent)) {
                ++nextOfParent;
            } else {
                EXPECT_EQ(line, "child " + std::to_string(children));
                ++children;
            }
        }
        EXPECT_EQ(nextOfParent, number);
        EXPECT_EQ(children, 100);
    });
}

TEST(BufferedLogInAChildProcess, MayBeForkedWhileTheWorkerHasTheLock) {
    inFreshFolder([] {
        const auto log = makeLog(1ms);
        const std::string line(std::size_t{100} * 1024, 'x'); // a write takes long
        writeUntilOneIsKept(*log);
        for (int i = 0; i < 30 && !testing::Test::HasFailure(); ++i) {
            const auto before = fs::file_size("zol.log");
            for (int j = 0; j < 9; ++j) {
                write(*log, line);
            }
            while (fs::file_size("zol.log") == before) {
            }
            inChild([&] {
                write(*log, "child");
                log->finish();
            });
        }
        log->close();
        EXPECT_EQ(count(textOf("zol.log"), "child"), 30U);
    });
}

TEST(BufferedLogOnAFullDisk, KeepsItsLinesUntilThereIsRoom) {
    inFreshFolder([] {
        fs::create_directory("disk");
        support::leaveTheMachinesMounts();
        support::mountMemory("disk", "size=64k");
        const auto log = makeLog(5ms, "disk/zol.log");
        writeUntilOneIsKept(*log, "disk/zol.log");
        std::ofstream("disk/filler") << std::string(std::size_t{64} * 1024, 'x');
        std::string expected;
        for (int i = 0; i < 300; ++i) {
            const std::string line = "line " + std::to_string(i) + std::string(100, '.');
            write(*log, line);
            expected += line + "\n";
        }
        std::this_thread::sleep_for(50ms);
        EXPECT_LT(fs::file_size("disk/zol.log"), 10000U);
        fs::remove("disk/filler");
        testing::internal::CaptureStderr();
        log->close();
        DropCounter drops("Test");
        log->countLostLines(drops);
        drops.reportAtExit();
        // The line that was torn when the disk was full is lost, and no other one.
        const std::string report = testing::internal::GetCapturedStderr();
        const std::string text = textOf("disk/zol.log");
        std::size_t missing = 0;
        std::istringstream lines(expected);
        for (std::string line; std::getline(lines, line);) {
            missing += count(text, line) == 1 ? 0 : 1;
        }
        EXPECT_LE(missing, 1U);
        EXPECT_EQ(report.find("lost messages: 1\n") != std::string::npos, missing == 1) << report;
    });
}

TEST(BufferedLogOnAFullDisk, CountsTheLinesThatItCannotWriteAtItsEnd) {
    inFreshFolder([] {
        fs::create_directory("disk");
        support::leaveTheMachinesMounts();
        support::mountMemory("disk", "size=64k");
        const auto log = makeLog(1h, "disk/zol.log");
        const std::ptrdiff_t started = writeUntilOneIsKept(*log, "disk/zol.log");
        std::ofstream("disk/filler") << std::string(std::size_t{64} * 1024, 'x');
        constexpr std::ptrdiff_t written = 400;
        for (std::ptrdiff_t i = 0; i < written; ++i) {
            write(*log, "line " + std::to_string(i) + std::string(100, '.'));
        }
        testing::internal::CaptureStderr();
        log->close();
        DropCounter drops("Test");
        log->countLostLines(drops);
        drops.reportAtExit();
        const std::string text = textOf("disk/zol.log");
        const std::ptrdiff_t whole = std::count(text.begin(), text.end(), '\n');
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "ZOL back end Test: messages are being lost: cannot write to disk/zol.log: No "
                  "space left on device\nZOL back end Test: the process ends, lost messages: " +
                      std::to_string(started + written - whole) + "\n");
    });
}

TEST(BufferedLogOnAFullDisk, RefusesLinesWhenItsBufferIsFull) {
    inFreshFolder([] {
        fs::create_directory("disk");
        support::leaveTheMachinesMounts();
        support::mountMemory("disk", "size=64k");
        const auto log = makeLog(1h, "disk/zol.log");
        writeUntilOneIsKept(*log, "disk/zol.log");
        const std::string line(10000, 'x');
        std::string failure;
        for (int i = 0; i < 200 && failure.empty(); ++i) {
            try {
                write(*log, line);
            } catch (const LogFileError& error) {
                failure = error.what();
            }
        }
        EXPECT_EQ(failure, "cannot write to disk/zol.log: No space left on device");
        log->close();
    });
}

} // namespace
