#include "Thread.h"

#include <condition_variable>
#include <csignal>
#include <mutex>
#include <new>

#include <pthread.h>

#include "Process.h"

namespace ZOL::Backends {

namespace {

constexpr std::size_t maxThreadName = 15;

struct Start {
    void (*function)(void*);
    void* argument;
};

void* run(void* argument) {
    const std::unique_ptr<Start> start(static_cast<Start*>(argument));
    start->function(start->argument);
    return nullptr;
}

/// Blocks all signals of the current thread; a thread inherits that from its creator.
class AllSignalsBlocked {
public:
    AllSignalsBlocked() noexcept {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &mask_);
    }
    AllSignalsBlocked(const AllSignalsBlocked&) = delete;
    AllSignalsBlocked& operator=(const AllSignalsBlocked&) = delete;
    ~AllSignalsBlocked() { pthread_sigmask(SIG_SETMASK, &mask_, nullptr); }

private:
    sigset_t mask_{};
};

} // namespace

bool startThread(void (*function)(void*), void* argument) noexcept {
    if (!keepModuleLoaded()) {
        return false;
    }
    std::unique_ptr<Start> start(new (std::nothrow) Start{function, argument});
    if (start == nullptr) {
        return false;
    }
    const AllSignalsBlocked block;
    pthread_t thread{};
    if (pthread_create(&thread, nullptr, run, start.get()) != 0) {
        return false;
    }
    start.release(); // NOLINT(bugprone-unused-return-value): the thread deletes it
    pthread_detach(thread);
    return true;
}

void nameThread(const std::string& name) noexcept {
    char shortName[maxThreadName + 1] = "";
    name.copy(shortName, maxThreadName);
    pthread_setname_np(pthread_self(), shortName);
}

struct WakeSignal::State {
    std::mutex mutex;
    std::condition_variable condition;
    bool isSet = false;
};

WakeSignal::WakeSignal() : state_(std::make_unique<State>()) {}

WakeSignal::~WakeSignal() = default;

void WakeSignal::set() noexcept {
    {
        const std::lock_guard<std::mutex> lock(state_->mutex);
        state_->isSet = true;
    }
    state_->condition.notify_one();
}

void WakeSignal::wait(std::optional<std::chrono::milliseconds> time) noexcept {
    std::unique_lock<std::mutex> lock(state_->mutex);
    const auto isSet = [this] {
        return state_->isSet;
    };
    if (time) {
        state_->condition.wait_for(lock, *time, isSet);
    } else {
        state_->condition.wait(lock, isSet);
    }
    state_->isSet = false;
}

} // namespace ZOL::Backends
