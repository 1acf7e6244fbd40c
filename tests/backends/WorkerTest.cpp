#include "Worker.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <optional>
#include <thread>

#include <gtest/gtest.h>

#include "Thread.h"
#include "WaitFor.h"

using namespace ZOL::Backends;
using namespace std::chrono_literals;

namespace {

/// Counts its runs.
class CountingTask final : public WorkerTask {
public:
    explicit CountingTask(std::optional<std::chrono::milliseconds> pause) : pause_(pause) {}

    std::optional<std::chrono::milliseconds> run() noexcept override {
        thread = std::this_thread::get_id();
        ++runs;
        return pause_;
    }

    std::atomic<int> runs = 0;
    std::atomic<std::thread::id> thread{};

private:
    std::optional<std::chrono::milliseconds> pause_;
};

/// Whether all others have let go of the task.
bool isReleased(const std::shared_ptr<CountingTask>& task) {
    return isSoon([&] { return task.use_count() == 1; });
}

TEST(Worker, RunsItsTaskWhenItHasStarted) {
    const auto task = std::make_shared<CountingTask>(std::nullopt);
    const std::unique_ptr<Worker> worker = Worker::create("test", task);
    ASSERT_NE(worker, nullptr);
    EXPECT_TRUE(isSoon([&] { return task->runs == 1; }));
    EXPECT_TRUE(worker->isRunning());
    EXPECT_NE(task->thread, std::this_thread::get_id());
    std::this_thread::sleep_for(20ms);
    EXPECT_EQ(task->runs, 1) << "nobody has woken it";
}

TEST(Worker, RunsItsTaskEachTimeItIsWoken) {
    const auto task = std::make_shared<CountingTask>(std::nullopt);
    const std::unique_ptr<Worker> worker = Worker::create("test", task);
    for (int runs = 1; runs < 10; ++runs) {
        ASSERT_TRUE(isSoon([&] { return task->runs == runs; }));
        worker->wake();
    }
}

TEST(Worker, RunsItsTaskAfterItsPause) {
    const auto task = std::make_shared<CountingTask>(1ms);
    const std::unique_ptr<Worker> worker = Worker::create("test", task);
    EXPECT_TRUE(isSoon([&] { return task->runs > 5; }));
}

TEST(Worker, ReleasesItsTaskWhenItEnds) {
    const auto task = std::make_shared<CountingTask>(std::nullopt);
    std::unique_ptr<Worker> worker = Worker::create("test", task);
    EXPECT_TRUE(isSoon([&] { return task->runs == 1; }));
    EXPECT_GT(task.use_count(), 1);
    worker.reset();
    EXPECT_TRUE(isReleased(task));
    const int runs = task->runs;
    std::this_thread::sleep_for(10ms);
    EXPECT_EQ(task->runs, runs);
}

TEST(Worker, MayEndBeforeItsThreadRuns) {
    for (int i = 0; i < 100; ++i) {
        const auto task = std::make_shared<CountingTask>(1h);
        Worker::create("test", task).reset();
        EXPECT_TRUE(isReleased(task));
    }
}

TEST(WakeSignal, IsKeptUntilSomebodyWaits) {
    WakeSignal signal;
    signal.set();
    signal.set();
    signal.wait({}); // returns at once
    const auto begin = std::chrono::steady_clock::now();
    signal.wait(20ms);
    EXPECT_GE(std::chrono::steady_clock::now() - begin, 10ms) << "it wakes once";
    signal.wait(0ms);
}

} // namespace
