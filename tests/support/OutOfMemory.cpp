#include "OutOfMemory.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <new>
#include <thread>

namespace support {

OutOfMemory::Outcome OutOfMemory::attempt(std::size_t n, const Action& operation) const {
    Outcome outcome = {};
    bool threwSomethingElse = false;
    FailingAllocator::start(n, GetParam());
    try {
        operation();
    } catch (const std::bad_alloc&) {
        outcome.threwBadAlloc = true;
    } catch (...) {
        threwSomethingElse = true;
    }
    FailingAllocator::stop();
    outcome.failed = FailingAllocator::failures() > 0;
    outcome.blocksLeft = FailingAllocator::blocksLeft();
    EXPECT_FALSE(threwSomethingElse) << "at allocation " << n;
    return outcome;
}

std::size_t OutOfMemory::sweep(const Action& operation, const Action& afterFailure,
                               std::ptrdiff_t blocksLeft) const {
    for (std::size_t n = 1;; ++n) {
        const Outcome outcome = attempt(n, operation);
        EXPECT_EQ(outcome.threwBadAlloc, outcome.failed) << "at allocation " << n;
        if (!outcome.failed || testing::Test::HasFatalFailure()) {
            return n - 1;
        }
        if (blocksLeft != anyNumber) {
            EXPECT_EQ(outcome.blocksLeft, blocksLeft) << "at allocation " << n;
        }
        SCOPED_TRACE("after the failure of allocation " + std::to_string(n));
        afterFailure();
    }
}

void OutOfMemory::onAnotherThread(const Action& action) {
    std::future<void> done = std::async(std::launch::async, action);
    if (done.wait_for(std::chrono::seconds(60)) != std::future_status::ready) {
        std::fputs("deadlock on another thread: is a lock still held?\n", stderr);
        std::abort();
    }
    done.get();
}

std::string OutOfMemory::uniqueName() {
    static int count = 0;
    return "a name longer than the small-string buffer, number " + std::to_string(1000 + ++count);
}

std::size_t OutOfMemory::allocationsOf(const Action& action) {
    FailingAllocator::start(0, FailingAllocator::Mode::Once);
    action();
    FailingAllocator::stop();
    return FailingAllocator::allocations();
}

std::string modeName(const testing::TestParamInfo<FailingAllocator::Mode>& info) {
    return nameOf(info.param);
}

} // namespace support
