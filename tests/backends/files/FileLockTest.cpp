#include "files/FileLock.h"

#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ChildProcess.h"
#include "FreshFolder.h"
#include "files/LogFile.h"

using support::ChildProcess;
using ZOL::Backends::FileLock;
using ZOL::Backends::LogFileError;

namespace {

constexpr const char* name = "zol.log";
constexpr const char* roleVariable = "ZOL_TEST_LOCKS_BESIDE";
constexpr int refusedExit = 21;
constexpr int takenExit = 22;

/// In the process that runBeside() starts: takes the lock, and ends without releasing it.
void lockAndEndIfBeside() {
    if (ChildProcess::environment(roleVariable).empty()) {
        return;
    }
    const auto lock = FileLock::tryLock(name);
    std::_Exit(lock ? takenExit : refusedExit);
}

/// Lets another process, which runs this test too, try to take the lock.
int exitCodeBeside(const std::string& test) {
    ChildProcess::setEnvironment(roleVariable, "yes");
    ChildProcess other({ChildProcess::thisProgram(), "--gtest_filter=FileLock." + test});
    ChildProcess::setEnvironment(roleVariable, "");
    return other.wait();
}

TEST(FileLock, IsTakenOnce) {
    inFreshFolder([] {
        const auto lock = FileLock::tryLock(name);
        ASSERT_NE(lock, nullptr);
        EXPECT_TRUE(lock->isHeld());
        EXPECT_EQ(FileLock::tryLock(name), nullptr);
        EXPECT_EQ(FileLock::tryLock(name), nullptr) << "the refused attempt took it";
        EXPECT_TRUE(lock->isHeld());
    });
}

TEST(FileLock, IsRefusedToAnotherProcess) {
    lockAndEndIfBeside();
    inFreshFolder([] {
        const auto lock = FileLock::tryLock(name);
        ASSERT_NE(lock, nullptr);
        EXPECT_EQ(exitCodeBeside("IsRefusedToAnotherProcess"), refusedExit);
    });
}

TEST(FileLock, IsFreeAfterItsProcessEnded) {
    lockAndEndIfBeside();
    inFreshFolder([] {
        EXPECT_EQ(exitCodeBeside("IsFreeAfterItsProcessEnded"), takenExit);
        EXPECT_NE(FileLock::tryLock(name), nullptr);
    });
}

TEST(FileLock, IsFreeAfterItsDestruction) {
    inFreshFolder([] {
        for (int i = 0; i < 100; ++i) {
            const auto lock = FileLock::tryLock(name);
            ASSERT_NE(lock, nullptr) << "the lock number " << i;
            EXPECT_TRUE(lock->isHeld());
        }
    });
}

TEST(FileLock, OfOneLogDoesNotLockAnother) {
    inFreshFolder([] {
        const auto one = FileLock::tryLock(name);
        const auto other = FileLock::tryLock("other.log");
        EXPECT_NE(one, nullptr);
        EXPECT_NE(other, nullptr);
    });
}

TEST(FileLock, IsTakenForMoreLogsThanABackEndHas) {
    inFreshFolder([] {
        constexpr int count = 40;
        const auto path = [](int number) {
            return std::to_string(number) + ".log";
        };
        {
            std::vector<std::unique_ptr<FileLock>> locks;
            for (int i = 0; i < count; ++i) {
                locks.push_back(FileLock::tryLock(path(i)));
                ASSERT_NE(locks.back(), nullptr) << path(i);
                EXPECT_TRUE(locks.back()->isHeld()) << path(i);
            }
            for (int i = 0; i < count; ++i) {
                EXPECT_EQ(FileLock::tryLock(path(i)), nullptr) << path(i);
            }
        }
        for (int i = 0; i < count; ++i) {
            EXPECT_NE(FileLock::tryLock(path(i)), nullptr) << path(i);
        }
    });
}

TEST(FileLock, LeavesTheLogItselfToOthers) {
    inFreshFolder([] {
        std::ofstream(name) << "text";
        const auto lock = FileLock::tryLock(name);
        EXPECT_EQ(textOf(name), "text");
        EXPECT_TRUE(std::filesystem::remove(name));
    });
}

TEST(FileLock, InAMissingFolderIsAnErrorWithTheNameOfTheLockFile) {
    inFreshFolder([] {
        const std::string expected = "cannot open missing/zol.log.lock: ";
        try {
            FileLock::tryLock("missing/zol.log");
            ADD_FAILURE() << "no error";
        } catch (const LogFileError& error) {
            const std::string text = error.what();
            EXPECT_EQ(text.substr(0, expected.size()), expected);
            EXPECT_GT(text.size(), expected.size()) << "without a reason";
        }
    });
}

} // namespace
