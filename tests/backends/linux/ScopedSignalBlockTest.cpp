#include "Diagnostics.h"

#include <cerrno>
#include <csignal>
#include <ctime>

#include <gtest/gtest.h>
#include <unistd.h>

#include "BrokenPipe.h"

using ZOL::Backends::ScopedSignalBlock;

namespace {

bool isBlocked(int signal) {
    sigset_t mask;
    pthread_sigmask(SIG_BLOCK, nullptr, &mask);
    return sigismember(&mask, signal) == 1;
}

bool isPending(int signal) {
    sigset_t pending;
    sigpending(&pending);
    return sigismember(&pending, signal) == 1;
}

void expectFailedWrite() {
    const BrokenPipe pipe;
    EXPECT_EQ(write(pipe.descriptor(), "x", 1), -1);
    EXPECT_EQ(errno, EPIPE);
}

TEST(ScopedSignalBlock, MakesAWriteToABrokenPipeFailAndDiscardsTheSignal) {
    {
        const ScopedSignalBlock block;
        expectFailedWrite();
        EXPECT_TRUE(isPending(SIGPIPE));
    }
    EXPECT_FALSE(isPending(SIGPIPE));
    EXPECT_FALSE(isBlocked(SIGPIPE));
    EXPECT_FALSE(isBlocked(SIGXFSZ));
}

TEST(ScopedSignalBlock, CanBeNested) {
    {
        const ScopedSignalBlock outer;
        {
            const ScopedSignalBlock inner;
            expectFailedWrite();
        }
        EXPECT_TRUE(isBlocked(SIGPIPE)) << "by the outer block";
        EXPECT_TRUE(isBlocked(SIGXFSZ));
    }
    EXPECT_FALSE(isPending(SIGPIPE));
    EXPECT_FALSE(isBlocked(SIGPIPE));
}

TEST(ScopedSignalBlock, KeepsASignalThatTheHostHasBlocked) {
    sigset_t pipeSignal;
    sigemptyset(&pipeSignal);
    sigaddset(&pipeSignal, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &pipeSignal, nullptr);
    raise(SIGPIPE);
    {
        // Destroyed at once.
        const ScopedSignalBlock block;
    }
    EXPECT_TRUE(isBlocked(SIGPIPE));
    EXPECT_TRUE(isPending(SIGPIPE));
    const timespec noWait{};
    EXPECT_EQ(sigtimedwait(&pipeSignal, nullptr, &noWait), SIGPIPE);
    pthread_sigmask(SIG_UNBLOCK, &pipeSignal, nullptr);
}

} // namespace
