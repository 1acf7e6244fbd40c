#include "files/FileLock.h"

#include <csignal>
#include <filesystem>
#include <memory>
#include <optional>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "ClosedStreams.h"
#include "FreshFolder.h"
#include "OpenDescriptors.h"
#include "files/LogFile.h"

using ZOL::Backends::FileLock;
using ZOL::Backends::LogFileError;
namespace fs = std::filesystem;

namespace {

constexpr const char* name = "zol.log";
constexpr const char* lockName = "zol.log.lock";
/// After which a call that blocks ends the process.
constexpr unsigned secondsToBlock = 20;

class Pipe {
public:
    Pipe() { EXPECT_EQ(pipe(ends_), 0); }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        close(ends_[0]);
        closeWriteEnd();
    }

    void send() const {
        const char byte = 'x';
        static_cast<void>(!write(ends_[1], &byte, 1));
    }

    /// Waits for a byte. False if nobody can send one any more.
    bool receive() const {
        char byte = 0;
        return read(ends_[0], &byte, 1) == 1;
    }

    void closeWriteEnd() {
        if (ends_[1] != -1) {
            close(ends_[1]);
            ends_[1] = -1;
        }
    }

private:
    int ends_[2] = {-1, -1};
};

int statusOf(pid_t child) {
    int status = -1;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return status;
}

TEST(FileLockOnLinux, IsFreeAfterItsProcessWasKilled) {
    inFreshFolder([] {
        Pipe ready;
        const pid_t holder = fork();
        if (holder == 0) {
            const auto lock = FileLock::tryLock(name);
            if (lock) {
                ready.send();
            }
            ready.closeWriteEnd();
            alarm(secondsToBlock); // it must not outlive a test that failed
            pause();
            _exit(0);
        }
        ready.closeWriteEnd();
        EXPECT_TRUE(ready.receive());
        EXPECT_EQ(FileLock::tryLock(name), nullptr);
        kill(holder, SIGKILL);
        EXPECT_TRUE(WIFSIGNALED(statusOf(holder)));
        EXPECT_NE(FileLock::tryLock(name), nullptr);
    });
}

TEST(FileLockOnLinux, IsNotHeldByAChild) {
    inFreshFolder([] {
        auto lock = FileLock::tryLock(name);
        ASSERT_NE(lock, nullptr);
        const pid_t child = fork();
        if (child == 0) {
            const bool isHeld = lock->isHeld();
            const bool isOpen = !descriptorsOf(lockName).empty();
            lock.reset();
            _exit((isHeld ? 1 : 0) | (isOpen ? 2 : 0) | (FileLock::tryLock(name) ? 4 : 0));
        }
        EXPECT_EQ(statusOf(child), 0) << "held: 256, open: 512, taken: 1024";
        EXPECT_TRUE(lock->isHeld());
        EXPECT_EQ(FileLock::tryLock(name), nullptr) << "the child released its parent's lock";
    });
}

TEST(FileLockOnLinux, IsNotHeldByAChildAlsoAfterManyOthers) {
    inFreshFolder([] {
        for (int i = 0; i < 100; ++i) {
            FileLock::tryLock(name);
        }
        const auto lock = FileLock::tryLock(name);
        ASSERT_NE(lock, nullptr);
        const pid_t child = fork();
        if (child == 0) {
            _exit(lock->isHeld() ? 1 : 0);
        }
        EXPECT_EQ(statusOf(child), 0);
    });
}

TEST(FileLockOnLinux, CanBeTakenByAChildAfterItsParentReleasedIt) {
    inFreshFolder([] {
        auto lock = FileLock::tryLock(name);
        Pipe released;
        const pid_t child = fork();
        if (child == 0) {
            released.closeWriteEnd();
            released.receive();
            lock = FileLock::tryLock(name);
            _exit(lock && lock->isHeld() ? 0 : 1);
        }
        lock.reset();
        released.closeWriteEnd();
        EXPECT_EQ(statusOf(child), 0);
    });
}

TEST(FileLockOnLinux, IsFreeAfterItsProcessEndedAlthoughAChildLivesOn) {
    inFreshFolder([] {
        Pipe alive;
        Pipe end;
        const pid_t holder = fork();
        if (holder == 0) {
            end.closeWriteEnd();
            const auto lock = FileLock::tryLock(name);
            if (lock && fork() == 0) {
                alive.send();
                end.receive();
            }
            _exit(lock ? 0 : 1);
        }
        alive.closeWriteEnd();
        EXPECT_EQ(statusOf(holder), 0);
        EXPECT_TRUE(alive.receive()) << "the child does not live";
        EXPECT_NE(FileLock::tryLock(name), nullptr);
    });
}

TEST(FileLockOnLinux, IsClosedOnExec) {
    inFreshFolder([] {
        const auto lock = FileLock::tryLock(name);
        const auto descriptors = descriptorsOf(lockName);
        ASSERT_EQ(descriptors.size(), 1U);
        EXPECT_EQ(fcntl(descriptors[0], F_GETFD), FD_CLOEXEC);
    });
}

TEST(FileLockOnLinux, LiesAboveClosedStandardStreams) {
    inFreshFolder([] {
        std::optional<ClosedStreams> closed(std::in_place);
        const auto lock = FileLock::tryLock(name);
        closed.reset();
        const auto descriptors = descriptorsOf(lockName);
        ASSERT_EQ(descriptors.size(), 1U);
        EXPECT_GT(descriptors[0], STDERR_FILENO);
        EXPECT_EQ(FileLock::tryLock(name), nullptr);
    });
}

TEST(FileLockOnLinux, LeavesItsFileAndNoDescriptor) {
    inFreshFolder([] {
        {
            const auto lock = FileLock::tryLock(name);
            FileLock::tryLock(name);
            EXPECT_EQ(descriptorsOf(lockName).size(), 1U) << "the refused attempt left one open";
        }
        EXPECT_TRUE(descriptorsOf(lockName).empty());
        EXPECT_TRUE(fs::exists(lockName));
    });
}

TEST(FileLockOnLinux, CreatesNothingAtTheTargetOfALink) {
    inFreshFolder([] {
        fs::create_symlink("target", lockName);
        EXPECT_THROW(FileLock::tryLock(name), LogFileError);
        EXPECT_FALSE(fs::exists("target"));
    });
}

TEST(FileLockOnLinux, DoesNotWaitForTheReaderOfAFifo) {
    inFreshFolder([] {
        ASSERT_EQ(mkfifo(lockName, 0600), 0);
        alarm(secondsToBlock);
        EXPECT_THROW(FileLock::tryLock(name), LogFileError);
        alarm(0);
    });
}

} // namespace
