#include "NoSignals.h"

#include <cerrno>
#include <csignal>
#include <ctime>

#include <gtest/gtest.h>
#include <unistd.h>

#include "BrokenPipe.h"

using ZOL::Backends::NoSignals;

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

void expectAFailedWrite() {
    const BrokenPipe pipe;
    EXPECT_EQ(write(pipe.descriptor(), "x", 1), -1);
    EXPECT_EQ(errno, EPIPE);
}

TEST(NoSignals, LetWritesIntoABrokenPipeFailAndLeaveNothingBehind) {
    {
        const NoSignals noSignals;
        expectAFailedWrite();
        EXPECT_TRUE(isPending(SIGPIPE));
    }
    EXPECT_FALSE(isPending(SIGPIPE));
    EXPECT_FALSE(isBlocked(SIGPIPE));
    EXPECT_FALSE(isBlocked(SIGXFSZ));
}

TEST(NoSignals, MayBeNested) {
    {
        const NoSignals outer;
        {
            const NoSignals inner;
            expectAFailedWrite();
        }
        EXPECT_TRUE(isBlocked(SIGPIPE)) << "the outer one still lives";
        EXPECT_TRUE(isBlocked(SIGXFSZ));
    }
    EXPECT_FALSE(isPending(SIGPIPE));
    EXPECT_FALSE(isBlocked(SIGPIPE));
}

TEST(NoSignals, LeaveASignalToAHostThatWaitsForItItself) {
    sigset_t pipeSignal;
    sigemptyset(&pipeSignal);
    sigaddset(&pipeSignal, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &pipeSignal, nullptr);
    raise(SIGPIPE);
    { const NoSignals noSignals; }
    EXPECT_TRUE(isBlocked(SIGPIPE));
    EXPECT_TRUE(isPending(SIGPIPE));
    const timespec atOnce{};
    EXPECT_EQ(sigtimedwait(&pipeSignal, nullptr, &atOnce), SIGPIPE);
    pthread_sigmask(SIG_UNBLOCK, &pipeSignal, nullptr);
}

} // namespace
