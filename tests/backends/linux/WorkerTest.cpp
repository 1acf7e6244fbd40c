#include "Worker.h"

#include <csignal>
#include <string>

#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include "FreshProcess.h"
#include "WaitFor.h"

using namespace ZOL::Backends;

namespace {

/// Looks at its thread.
class LookingTask final : public WorkerTask {
public:
    std::optional<std::chrono::milliseconds> run() noexcept override {
        char text[16] = "";
        pthread_getname_np(pthread_self(), text, sizeof(text));
        name = text;
        sigset_t mask;
        pthread_sigmask(SIG_SETMASK, nullptr, &mask);
        for (const int signal : {SIGTERM, SIGINT, SIGXFSZ, SIGPIPE, SIGUSR1, SIGALRM, SIGCHLD}) {
            blockedSignals += sigismember(&mask, signal);
        }
        isDone = true;
        return std::nullopt;
    }

    std::string name;
    int blockedSignals = 0;
    std::atomic<bool> isDone = false;
};

TEST(Worker, HasANameAndBlocksSignals) {
    const auto task = std::make_shared<LookingTask>();
    sigset_t before;
    pthread_sigmask(SIG_SETMASK, nullptr, &before);
    const auto worker = Worker::create("zol-RotatingFile", task);
    ASSERT_TRUE(isSoon([&] { return task->isDone.load(); }));
    EXPECT_EQ(task->name, "zol-RotatingFil");
    EXPECT_EQ(task->blockedSignals, 7);
    sigset_t after;
    pthread_sigmask(SIG_SETMASK, nullptr, &after);
    EXPECT_EQ(sigismember(&after, SIGTERM), sigismember(&before, SIGTERM));
}

TEST(Worker, IsNullIfThereCanBeNoThread) {
    support::inFreshProcess([] {
        if (geteuid() == 0) {
            ASSERT_EQ(setuid(65534), 0); // the limit is none for root
        }
        prctl(PR_SET_DUMPABLE, 1); // the leak check of a sanitizer traces the process
        rlimit before{};
        ASSERT_EQ(getrlimit(RLIMIT_NPROC, &before), 0);
        const rlimit none{0, before.rlim_max};
        ASSERT_EQ(setrlimit(RLIMIT_NPROC, &none), 0);
        const auto task = std::make_shared<LookingTask>();
        EXPECT_EQ(Worker::create("test", task), nullptr);
        EXPECT_EQ(task.use_count(), 1);
        ASSERT_EQ(setrlimit(RLIMIT_NPROC, &before), 0);
    });
}

} // namespace
