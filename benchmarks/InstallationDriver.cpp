#include <chrono>
#include <regex>
#include <stdexcept>
#include <string>

#include "Driver.h"
#include "Installation.h"
#include "Result.h"
#include "Texts.h"

// Measures what an installation of a back end costs, in a process of its own: it concerns all
// loggers that the process has, and they only grow in number.

namespace benchmarks {

namespace {

using Clock = std::chrono::steady_clock;
using Nanoseconds = std::chrono::duration<double, std::nano>;

constexpr std::size_t loggersWithCaches = 100;
constexpr std::size_t loggersPerMeasurement = 100000;

constexpr Row row(const char* work, Role role) {
    return {{work, 1}, role, role == Role::Floor ? "floor" : "ZOL", nullptr};
}

/// Time for each message that comes out of full caches. Filling them is not part of it; a channel
/// for each logger is.
template <typename Loggers>
double flushTime(Loggers& loggers) {
    constexpr std::size_t messages = loggersWithCaches * cachedMessages;
    FarSide& side = loggers.farSide();
    side.bytes = 0;
    side.isCounted = true;
    loggers.cache(fortyCharacters);
    const auto start = Clock::now();
    loggers.install();
    const Nanoseconds time = Clock::now() - start;
    loggers.uninstall();
    side.isCounted = false;
    if (side.bytes != messages * (sizeof(fortyCharacters) - 1)) {
        throw std::runtime_error("not all that was cached has come out");
    }
    return time.count() / messages;
}

/// Time for each logger of an installation and the removal behind it.
template <typename Loggers>
double installationTime(Loggers& loggers, std::size_t count) {
    const std::size_t installations = loggersPerMeasurement / count;
    const auto start = Clock::now();
    for (std::size_t i = 0; i < installations; ++i) {
        loggers.install();
        loggers.uninstall();
    }
    const Nanoseconds time = Clock::now() - start;
    return time.count() / static_cast<double>(loggersPerMeasurement);
}

struct Subjects {
    ProductLoggers product;
    BareLoggers bare;
};

/// Has both subjects do one work in turn.
template <typename Measure>
void measure(const char* work, int repetitions, Subjects& subjects, Measure&& timeOf) {
    const Row floorRow = row(work, Role::Floor);
    const Row productRow = row(work, Role::Product);
    writeRows({floorRow, productRow});
    for (int repetition = 0; repetition < repetitions; ++repetition) {
        writeResult(floorRow, repetition, timeOf(subjects.bare));
        writeResult(productRow, repetition, timeOf(subjects.product));
    }
}

} // namespace

void measureAll(const Options& options) {
    const std::regex wanted(options.only);
    Subjects subjects;
    const char* const flush = "message out of a full cache";
    for (const std::size_t count :
         {std::size_t(10), loggersWithCaches, std::size_t(1000), std::size_t(10000)}) {
        const std::string installation =
            "back end installed, for each of " + std::to_string(count) + " loggers";
        if (std::regex_search(installation, wanted)) {
            measure(installation.c_str(), options.repetitions, subjects, [&](auto& loggers) {
                loggers.growTo(count);
                return installationTime(loggers, count);
            });
        }
        if (count == loggersWithCaches && std::regex_search(flush, wanted)) {
            measure(flush, options.repetitions, subjects, [&](auto& loggers) {
                loggers.growTo(count);
                return flushTime(loggers);
            });
        }
    }
}

} // namespace benchmarks
