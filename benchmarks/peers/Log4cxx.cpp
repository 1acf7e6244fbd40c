#include <fmt/format.h>
#include <log4cxx/appenderskeleton.h>
#include <log4cxx/logger.h>
#include <log4cxx/logmanager.h>

#include "Peer.h"

namespace {

using namespace benchmarks;
using log4cxx::Logger;
using log4cxx::LoggerPtr;

std::size_t bytes = 0;

/// The library calls append under the appender's lock.
class DiscardingAppender final : public log4cxx::AppenderSkeleton {
public:
    void close() override {}
    bool requiresLayout() const override { return false; }

private:
    void append(const log4cxx::spi::LoggingEventPtr& event, log4cxx::helpers::Pool&) override {
        bytes += event->getRenderedMessage().size();
    }
};

const LoggerPtr& logger() {
    static const LoggerPtr logger = [] {
        LoggerPtr made = Logger::getLogger("benchmarks");
        made->addAppender(std::make_shared<DiscardingAppender>());
        made->setAdditivity(false); // no search for appenders of the parents
        made->setLevel(log4cxx::Level::getInfo());
        // No search for a configuration file.
        log4cxx::LogManager::getLoggerRepository()->setConfigured(true);
        return made;
    }();
    return logger;
}

struct Log4cxx {
    static void runText(std::size_t n) {
        const LoggerPtr& target = logger();
        for (std::size_t i = 0; i < n; ++i) {
            target->info(fortyCharacters);
        }
    }

    // The macro with fmt, which the library's documentation recommends for speed.
    static void runLine(std::size_t n) {
        const LoggerPtr& target = logger();
        const std::string& word = lineWord();
        for (std::size_t i = 0; i < n; ++i) {
            LOG4CXX_INFO_FMT(target, "text {} {} {}", static_cast<int>(i), lineNumber, word);
        }
    }

    static void runAsked(std::size_t n) {
        const LoggerPtr& target = logger();
        for (std::size_t i = 0; i < n; ++i) {
            keep(Logger::isDebugEnabledFor(target));
        }
    }

    static void runOffLine(std::size_t n) {
        const LoggerPtr& target = logger();
        const std::string& word = lineWord();
        for (std::size_t i = 0; i < n; ++i) {
            LOG4CXX_DEBUG_FMT(target, "text {} {} {}", static_cast<int>(i), lineNumber, word);
        }
    }

    static void prepareNames() {
        logger();
        forAllNames([](const std::string& name) { Logger::getLogger(name); });
    }

    template <std::size_t length>
    static void runNames(std::size_t n) {
        inTurn<length>(n, [](const std::string& name) { keep(Logger::getLogger(name)); });
    }

    static std::size_t totalBytes() { return bytes; }
};

} // namespace

Rows benchmarkRows() {
    return rowsOfPeer<Log4cxx>("log4cxx");
}
