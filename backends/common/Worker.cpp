#include "Worker.h"

#include <atomic>
#include <string>
#include <utility>

#include "Thread.h"

namespace ZOL::Backends {

struct Worker::State {
    State(std::string_view workerName, std::shared_ptr<WorkerTask> workerTask)
        : name(workerName), task(std::move(workerTask)) {}

    const std::string name;
    const std::shared_ptr<WorkerTask> task;
    WakeSignal signal;
    std::atomic<bool> isRunning = false;
    std::atomic<bool> isEnding = false;
};

std::unique_ptr<Worker> Worker::create(std::string_view name,
                                       std::shared_ptr<WorkerTask> task) noexcept {
    try {
        auto state = std::make_shared<State>(name, std::move(task));
        std::unique_ptr<Worker> worker(new Worker(state));
        // The thread owns the state as well.
        auto owned = std::make_unique<std::shared_ptr<State>>(std::move(state));
        const bool isStarted = startThread(
            [](void* argument) {
                const std::unique_ptr<std::shared_ptr<State>> held(
                    static_cast<std::shared_ptr<State>*>(argument));
                work(**held);
            },
            owned.get());
        if (!isStarted) {
            return nullptr;
        }
        owned.release(); // NOLINT(bugprone-unused-return-value): the thread deletes it
        return worker;
    } catch (...) {
        return nullptr;
    }
}

Worker::Worker(std::shared_ptr<State> state) noexcept : state_(std::move(state)) {}

Worker::~Worker() {
    state_->isEnding = true;
    wake();
}

bool Worker::isRunning() const noexcept {
    return state_->isRunning;
}

void Worker::wake() noexcept {
    state_->signal.set();
}

void Worker::work(State& state) noexcept {
    nameThread(state.name);
    state.isRunning = true;
    while (!state.isEnding) {
        state.signal.wait(state.task->run());
    }
}

} // namespace ZOL::Backends
