#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include <boost/thread/recursive_mutex.hpp>

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/Management/MemoryManager.h"

#include "Driver.h"
#include "Subject.h"
#include "baseline/Baseline.h"

using ZOL::Framework::GenericLogger::Logger;
using ZOL::Framework::GenericLogger::LoggerBackend;
namespace MemoryManager = ZOL::Framework::Management::MemoryManager;

// Measures the installation of a back end. It has a process of its own, because an installation
// affects all loggers of the process, and their number only grows.

namespace benchmarks {

namespace {

constexpr std::size_t loggersWithCaches = 100;
constexpr std::size_t cachedMessages = 101; // as many as a logger caches before it overflows
constexpr std::size_t allCachedMessages = loggersWithCaches * cachedMessages;

std::string nameOf(std::size_t number) {
    return "orders.page." + std::to_string(number);
}

class ProductLoggers {
public:
    void growTo(std::size_t count) {
        while (loggers_.size() < count) {
            loggers_.push_back(Logger::getLogger(nameOf(loggers_.size()).c_str()));
        }
    }

    /// Fills every logger's cache. No back end may be installed.
    void fillCaches(const char* text) {
        for (Logger* const logger : loggers_) {
            for (std::size_t i = 0; i < cachedMessages; ++i) {
                logger->info(text);
            }
        }
    }

    /// Creates a channel for each logger and delivers what is cached.
    void install() { Logger::installBackend(backend_); }
    void uninstall() { Logger::uninstallBackend(backend_); }

    ByteCounter& counter() {
        return *static_cast<ByteCounter*>(MemoryManager::findObject(discardCounterName));
    }

private:
    LoggerBackend* const backend_ = Logger::loadBackend("BenchmarkDiscard");
    std::vector<Logger*> loggers_;
};

/// The floor: the least work for the same operations.
class FloorLoggers {
public:
    void growTo(std::size_t count) {
        while (loggers_.size() < count) {
            loggers_.emplace(nameOf(loggers_.size()), CachingLogger());
        }
    }

    void fillCaches(const char* text) {
        for (auto& [name, logger] : loggers_) {
            logger.cache.assign(cachedMessages, text);
        }
    }

    void install() {
        const boost::recursive_mutex::scoped_lock locked(lock_);
        for (auto& [name, logger] : loggers_) {
            logger.sinks.clear();
            logger.sinks.push_back(sinkFactory().createSink(name.c_str()));
            for (const std::string& text : logger.cache) {
                for (Sink* const target : logger.sinks) {
                    target->log(0, text.c_str());
                }
            }
            logger.cache.clear();
        }
    }

    void uninstall() {}
    ByteCounter& counter() { return sink().counter(); }

private:
    struct CachingLogger {
        std::vector<Sink*> sinks;
        std::vector<std::string> cache;
    };

    boost::recursive_mutex lock_;
    std::map<std::string, CachingLogger> loggers_;
};

template <typename Loggers>
Loggers& loggers() {
    static Loggers loggers;
    return loggers;
}

template <typename Loggers, std::size_t count>
void grow() {
    loggers<Loggers>().growTo(count);
}

/// Installs and removes the back end. The workload's batch is the number of loggers, so the time is
/// that for each logger.
template <typename Loggers>
void runInstallation(std::size_t) {
    loggers<Loggers>().install();
    loggers<Loggers>().uninstall();
}

// The clock is stopped while caches are filled. The time of a batch includes a channel for each
// logger.

template <typename Loggers>
void prepareFlush() {
    grow<Loggers, loggersWithCaches>();
    loggers<Loggers>().install();
}

template <typename Loggers>
void prepareFlushBatch() {
    loggers<Loggers>().uninstall();
    loggers<Loggers>().fillCaches(fortyCharacters);
}

template <typename Loggers>
void runFlush(std::size_t) {
    loggers<Loggers>().install();
}

template <typename Loggers>
void finishFlush() {
    loggers<Loggers>().uninstall();
}

template <typename Loggers>
ByteCounter& counter() {
    return loggers<Loggers>().counter();
}

template <typename Loggers>
std::size_t deliverFlush(std::size_t n) {
    const std::size_t bytes = delivered<runFlush<Loggers>, counter<Loggers>>(n);
    if (bytes != allCachedMessages * (sizeof(fortyCharacters) - 1)) {
        throw std::runtime_error("an installation has not delivered everything that was cached");
    }
    return bytes;
}

template <std::size_t count>
std::vector<Row> installationRows() {
    static const std::string name =
        "back end installed, for each of " + std::to_string(count) + " loggers";
    const Workload installation = {name.c_str(), count};
    return {{installation, Role::Floor, "floor", runInstallation<FloorLoggers>,
             grow<FloorLoggers, count>},
            {installation, Role::Product, "ZOL", runInstallation<ProductLoggers>,
             grow<ProductLoggers, count>}};
}

template <typename Loggers>
Row flushRow(Role role, const char* subject) {
    return {{"message out of a full cache", allCachedMessages},
            role,
            subject,
            runFlush<Loggers>,
            prepareFlush<Loggers>,
            finishFlush<Loggers>,
            deliverFlush<Loggers>,
            prepareFlushBatch<Loggers>};
}

} // namespace

// In the order of the number of loggers, which the product cannot reduce.
void measureAll() {
    measure(installationRows<10>());
    measure(installationRows<loggersWithCaches>());
    measure({flushRow<FloorLoggers>(Role::Floor, "floor"),
             flushRow<ProductLoggers>(Role::Product, "ZOL")});
    measure(installationRows<1000>());
    measure(installationRows<10000>());
}

} // namespace benchmarks
