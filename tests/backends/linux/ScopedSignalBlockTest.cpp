#include "linux/ScopedSignalBlock.h"

#include <cerrno>
#include <csignal>
#include <cstdio>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include "BrokenPipe.h"
#include "SignalCalls.h"
#include "Signals.h"

using namespace ZOL::Backends;

namespace {

constexpr WriteSignals none{};
constexpr WriteSignals pipeOnly{true, false};
constexpr WriteSignals fileSizeOnly{false, true};
constexpr WriteSignals both{true, true};

/// Changes the file size limit during its lifetime.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t size) {
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit limit = before_;
        limit.rlim_cur = size;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &before_); }

private:
    rlimit before_{};
};

/// A file without a name.
class TemporaryFile {
public:
    TemporaryFile() : file_(std::tmpfile()) {}
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() { std::fclose(file_); }

    std::FILE* file() const { return file_; }
    int descriptor() const { return fileno(file_); }

private:
    std::FILE* file_;
};

void failOnABrokenPipe() {
    const BrokenPipe pipe;
    EXPECT_EQ(write(pipe.descriptor(), "x", 1), -1);
    EXPECT_EQ(errno, EPIPE);
}

void failBeyondTheFileSizeLimit() {
    const TemporaryFile file;
    const FileSizeLimit limit(0);
    EXPECT_EQ(write(file.descriptor(), "x", 1), -1);
    EXPECT_EQ(errno, EFBIG);
}

TEST(ScopedSignalBlock, MakesAWriteToABrokenPipeFailAndDiscardsTheSignal) {
    {
        ScopedSignalBlock block(pipeOnly);
        failOnABrokenPipe();
        EXPECT_TRUE(isPending(SIGPIPE));
        EXPECT_FALSE(isBlocked(SIGXFSZ));
        block.writeFailed();
    }
    EXPECT_FALSE(isPending(SIGPIPE));
    EXPECT_FALSE(isBlocked(SIGPIPE));
}

TEST(ScopedSignalBlock, MakesAWriteBeyondTheFileSizeLimitFailAndDiscardsTheSignal) {
    {
        ScopedSignalBlock block(fileSizeOnly);
        failBeyondTheFileSizeLimit();
        EXPECT_TRUE(isPending(SIGXFSZ));
        EXPECT_FALSE(isBlocked(SIGPIPE));
        block.writeFailed();
    }
    EXPECT_FALSE(isPending(SIGXFSZ));
    EXPECT_FALSE(isBlocked(SIGXFSZ));
}

TEST(ScopedSignalBlock, DiscardsTwoSignalsAtOnce) {
    {
        ScopedSignalBlock block(both);
        failOnABrokenPipe();
        failBeyondTheFileSizeLimit();
        block.writeFailed();
    }
    EXPECT_FALSE(isPending(SIGPIPE));
    EXPECT_FALSE(isPending(SIGXFSZ));
    EXPECT_FALSE(isBlocked(SIGPIPE));
    EXPECT_FALSE(isBlocked(SIGXFSZ));
}

TEST(ScopedSignalBlock, CanBeNested) {
    {
        ScopedSignalBlock outer(both);
        {
            ScopedSignalBlock inner(pipeOnly);
            failOnABrokenPipe();
            inner.writeFailed();
        }
        EXPECT_FALSE(isPending(SIGPIPE));
        EXPECT_TRUE(isBlocked(SIGPIPE)) << "by the outer block";
        EXPECT_TRUE(isBlocked(SIGXFSZ));
        failBeyondTheFileSizeLimit();
        outer.writeFailed();
        {
            ScopedSignalBlock inner(both);
            inner.writeFailed();
        }
        EXPECT_TRUE(isPending(SIGXFSZ)) << "the outer block discards it";
    }
    EXPECT_FALSE(isPending(SIGXFSZ));
    EXPECT_FALSE(isBlocked(SIGPIPE));
    EXPECT_FALSE(isBlocked(SIGXFSZ));
}

TEST(ScopedSignalBlock, DiscardsASignalThatTheHostHasBlockedAndKeepsItBlocked) {
    const BlockedSignal pipe(SIGPIPE);
    const BlockedSignal fileSize(SIGXFSZ);
    {
        ScopedSignalBlock block(both);
        failOnABrokenPipe();
        failBeyondTheFileSizeLimit();
        block.writeFailed();
    }
    EXPECT_FALSE(isPending(SIGPIPE));
    EXPECT_FALSE(isPending(SIGXFSZ));
    EXPECT_TRUE(isBlocked(SIGPIPE));
    EXPECT_TRUE(isBlocked(SIGXFSZ));
}

TEST(ScopedSignalBlock, KeepsASignalThatWasPendingBefore) {
    const BlockedSignal pipe(SIGPIPE);
    raise(SIGPIPE);
    {
        ScopedSignalBlock block(both);
        failOnABrokenPipe();
        failBeyondTheFileSizeLimit();
        block.writeFailed();
    }
    EXPECT_TRUE(isBlocked(SIGPIPE));
    EXPECT_TRUE(isPending(SIGPIPE));
    EXPECT_FALSE(isPending(SIGXFSZ)) << "the write has raised it";
    EXPECT_FALSE(isBlocked(SIGXFSZ));
}

TEST(ScopedSignalBlock, KeepsAFileSizeSignalThatWasPendingBefore) {
    const BlockedSignal fileSize(SIGXFSZ);
    raise(SIGXFSZ);
    {
        ScopedSignalBlock block(both);
        failOnABrokenPipe();
        block.writeFailed();
    }
    EXPECT_TRUE(isPending(SIGXFSZ));
    EXPECT_FALSE(isPending(SIGPIPE));
    EXPECT_FALSE(isBlocked(SIGPIPE));
}

TEST(ScopedSignalBlock, KeepsASignalThatIsSentToTheProcessAtTheSameTime) {
    const BlockedSignal pipe(SIGPIPE);
    // It stays pending, because there is no other thread that could receive it.
    {
        ScopedSignalBlock block(pipeOnly);
        failOnABrokenPipe();
        kill(getpid(), SIGPIPE);
        block.writeFailed();
    }
    EXPECT_TRUE(pipe.take());
    EXPECT_FALSE(pipe.take());
}

TEST(ScopedSignalBlock, DiscardsNothingIfNoWriteFailed) {
    const BlockedSignal pipe(SIGPIPE);
    {
        const ScopedSignalBlock block(both);
        raise(SIGPIPE);
    }
    EXPECT_TRUE(isPending(SIGPIPE));
}

TEST(ScopedSignalBlock, MakesNoSystemCallWithoutSignals) {
    SignalCalls::reset();
    {
        ScopedSignalBlock block(none);
        block.writeFailed();
    }
    EXPECT_EQ(SignalCalls::maskCalls(), 0);
    EXPECT_EQ(SignalCalls::pendingCalls(), 0);
}

TEST(ScopedSignalBlock, LooksForPendingSignalsOnlyAfterAFailedWrite) {
    SignalCalls::reset();
    {
        // Destroyed at once.
        const ScopedSignalBlock block(both);
    }
    EXPECT_EQ(SignalCalls::maskCalls(), 2);
    EXPECT_EQ(SignalCalls::pendingCalls(), 0);
}

TEST(WriteSignals, ArePossibleForPipesAndSockets) {
    int pipes[2] = {};
    ASSERT_EQ(pipe(pipes), 0);
    int sockets[2] = {};
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, sockets), 0);
    for (const int descriptor : {pipes[1], sockets[0]}) {
        EXPECT_TRUE(signalsOf(descriptor).pipe);
        EXPECT_FALSE(signalsOf(descriptor).fileSize);
    }
    for (const int descriptor : {pipes[0], pipes[1], sockets[0], sockets[1]}) {
        close(descriptor);
    }
}

TEST(WriteSignals, ArePossibleForFilesUnderASizeLimit) {
    const TemporaryFile file;
    EXPECT_FALSE(isFileSizeLimited());
    EXPECT_FALSE(signalsOf(file.descriptor()).fileSize);
    const FileSizeLimit limit(1000);
    EXPECT_TRUE(isFileSizeLimited());
    EXPECT_TRUE(signalsOf(file.descriptor()).fileSize);
    EXPECT_FALSE(signalsOf(file.descriptor()).pipe);
}

TEST(WriteSignals, AreNotPossibleForDevicesAndClosedDescriptors) {
    const FileSizeLimit limit(1000);
    const int device = open("/dev/null", O_WRONLY | O_CLOEXEC);
    EXPECT_FALSE(signalsOf(device).pipe);
    EXPECT_FALSE(signalsOf(device).fileSize);
    close(device);
    EXPECT_FALSE(signalsOf(device).pipe);
    EXPECT_FALSE(signalsOf(device).fileSize);
}

} // namespace
