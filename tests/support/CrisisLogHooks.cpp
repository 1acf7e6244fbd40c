#include "CrisisLogHooks.h"

#include <array>
#include <atomic>
#include <utility>

namespace support::CrisisLogHooks {

namespace {

constexpr long millisecondsPerDay = 24L * 60 * 60 * 1000;

std::atomic<bool> clockIsFixed = false;
std::atomic<long> timeOfDay = 0;
std::atomic<long> timeStep = 0;
std::array<std::atomic<bool>, 5> failing = {};
std::function<void(const Call&)> currentObserver;
std::atomic<bool> observed = false;

} // namespace

void setTime(int hour, int minute, int second, int millisecond, int step) {
    timeOfDay = ((hour * 60L + minute) * 60 + second) * 1000 + millisecond;
    timeStep = step;
    clockIsFixed = true;
}

long fixedTime() {
    return clockIsFixed ? timeOfDay.fetch_add(timeStep) % millisecondsPerDay : -1;
}

void observe(std::function<void(const Call&)> observer) {
    observed = false;
    currentObserver = std::move(observer);
    observed = currentObserver != nullptr;
}

void fail(Kind kind, bool fails) {
    failing[static_cast<std::size_t>(kind)] = fails;
}

bool fails(Kind kind) {
    return failing[static_cast<std::size_t>(kind)];
}

void report(Kind kind) {
    if (observed) {
        currentObserver({kind, 0, 0, {}});
    }
}

void reportWrite(const void* data, std::size_t size, std::size_t count) {
    if (observed) {
        currentObserver({Kind::Write, size, count, {static_cast<const char*>(data), size * count}});
    }
}

} // namespace support::CrisisLogHooks
