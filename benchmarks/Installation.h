#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include <boost/thread/recursive_mutex.hpp>

#include "far/TextTaker.h"

namespace ZOL::Framework::GenericLogger {
class Logger;
class LoggerBackend;
} // namespace ZOL::Framework::GenericLogger

namespace benchmarks {

/// What InstallationDriver measures of the product: loggers that only grow in number, and a back
/// end that comes and goes.
class ProductLoggers {
public:
    ProductLoggers();

    void growTo(std::size_t count);

    /// To be called without a back end: fills every logger's cache.
    void cache(const std::string& text);

    /// Delivers what is cached, and opens a channel for each logger.
    void install();
    void uninstall();

    /// Where the messages end that come out: counts their bytes while it is told to.
    FarSide& farSide() const;

private:
    ZOL::Framework::GenericLogger::LoggerBackend* backend_;
    std::vector<ZOL::Framework::GenericLogger::Logger*> loggers_;
};

/// The least that it takes, with the same operations.
class BareLoggers {
public:
    void growTo(std::size_t count);
    void cache(const std::string& text);
    void install();
    void uninstall() {}
    FarSide& farSide() const;

private:
    struct Bare {
        std::vector<TextTaker*> channels;
        std::vector<std::string> cached;
    };

    boost::recursive_mutex lock_;
    std::map<std::string, Bare> loggers_;
};

/// As many messages as a logger caches before it overflows.
inline constexpr std::size_t cachedMessages = 101;

} // namespace benchmarks
