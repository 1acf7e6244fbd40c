#include <atomic>
#include <chrono>
#include <cstdint>
#include <thread>

#include "ZOL/Framework/GenericLogger/LogStatements.h"

#include "Rows.h"

using namespace ZOL::Framework::GenericLogger;

namespace benchmarks {

namespace {

// What a statement costs that logs nothing although its level is active.
constexpr Workload suppressed = {"statement that is suppressed", 10000};
constexpr Workload suppressedOnTwoThreads = {"statement that is suppressed, two threads", 4000000};

constexpr int never = 2'000'000'000;
constexpr auto hour = std::chrono::hours(1);

Logger* const logger = Logger::getLogger("benchmarks.statements");
std::atomic<std::uint64_t> lockedCounter{0};

void checkLevel() {
    keep(logger->isLevelActive(LOG_LEVEL_ERROR));
}
void countWithLock() {
    keep(logger->isLevelActive(LOG_LEVEL_ERROR) &&
         lockedCounter.fetch_add(1, std::memory_order_relaxed) % never == 0);
}
void readClock() {
    keep(logger->isLevelActive(LOG_LEVEL_ERROR) &&
         std::chrono::steady_clock::now() == std::chrono::steady_clock::time_point());
}
void logFirstN() {
    ZOL_LOG_FIRST_N(logger, LOG_LEVEL_ERROR, 10) << "first n";
}
void logOnce() {
    ZOL_LOG_ONCE(logger, LOG_LEVEL_ERROR) << "once";
}
void logEveryN() {
    ZOL_LOG_EVERY_N(logger, LOG_LEVEL_ERROR, never) << "every n";
}
void logEvery() {
    ZOL_LOG_EVERY(logger, LOG_LEVEL_ERROR, hour) << "every";
}

template <void (*statement)()>
void run(std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        statement();
    }
}

template <void (*statement)()>
void runOnTwoThreads(std::size_t n) {
    std::thread other(run<statement>, n / 2);
    run<statement>(n - n / 2);
    other.join();
}

// Statements of their own, so that those above are executed by one thread alone.
void logEveryNOnTwoThreads() {
    ZOL_LOG_EVERY_N(logger, LOG_LEVEL_ERROR, never) << "every n";
}
void logEveryOnTwoThreads() {
    ZOL_LOG_EVERY(logger, LOG_LEVEL_ERROR, hour) << "every";
}

} // namespace

std::vector<Row> statementRows() {
    constexpr const char* level = "the level check alone";
    constexpr const char* locked = "level check and a locked counter";
    constexpr const char* clock = "level check and a reading of the clock";
    return {
        {suppressed, Role::Floor, level, run<checkLevel>},
        {suppressed, Role::Reference, locked, run<countWithLock>},
        {suppressed, Role::Reference, clock, run<readClock>},
        {suppressed, Role::Product, "ZOL_LOG_FIRST_N, used up", run<logFirstN>},
        {suppressed, Role::Product, "ZOL_LOG_ONCE, used up", run<logOnce>},
        {suppressed, Role::Product, "ZOL_LOG_EVERY_N", run<logEveryN>},
        {suppressed, Role::Product, "ZOL_LOG_EVERY", run<logEvery>},
        {suppressedOnTwoThreads, Role::Floor, level, runOnTwoThreads<checkLevel>},
        {suppressedOnTwoThreads, Role::Reference, locked, runOnTwoThreads<countWithLock>},
        {suppressedOnTwoThreads, Role::Reference, clock, runOnTwoThreads<readClock>},
        {suppressedOnTwoThreads, Role::Product, "ZOL_LOG_EVERY_N",
         runOnTwoThreads<logEveryNOnTwoThreads>},
        {suppressedOnTwoThreads, Role::Product, "ZOL_LOG_EVERY",
         runOnTwoThreads<logEveryOnTwoThreads>},
    };
}

} // namespace benchmarks
