#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string_view>

namespace ZOL::Backends {

/// What a worker does.
class WorkerTask {
public:
    WorkerTask() = default;
    WorkerTask(const WorkerTask&) = delete;
    WorkerTask& operator=(const WorkerTask&) = delete;
    virtual ~WorkerTask() = default;

    /// Does what is due. Called on the worker's thread, at first when it has started. On Windows
    /// the end of the process may kill the thread anywhere in it.
    /// @return how long to sleep then; nothing for until it is woken.
    virtual std::optional<std::chrono::milliseconds> run() noexcept = 0;
};

/// A thread of a back end, for what no statement of the host may wait for. It has a name and blocks
/// all signals. It can be created anywhere, also while modules are loaded; nobody ever waits for
/// it. After fork the child has none.
class Worker {
public:
    /// Null if there can be no thread.
    /// @param name at most 15 characters of it are seen on Linux.
    /// @param task is owned together with the thread, until that has ended.
    static std::unique_ptr<Worker> create(std::string_view name,
                                          std::shared_ptr<WorkerTask> task) noexcept;

    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    /// Lets the thread end after what it does at the moment, and does not wait for that.
    ~Worker();

    /// Whether the thread has begun to run. Before that it may not run for a long time: on Windows
    /// no thread begins while modules are loaded.
    bool isRunning() const noexcept;

    /// Lets the task run soon, also if it runs at the moment.
    void wake() noexcept;

private:
    struct State;
    explicit Worker(std::shared_ptr<State> state) noexcept;
    static void work(State& state) noexcept;

    std::shared_ptr<State> state_;
};

} // namespace ZOL::Backends
