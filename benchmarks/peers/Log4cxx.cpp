#include <fmt/format.h>
#include <log4cxx/appenderskeleton.h>
#include <log4cxx/logger.h>
#include <log4cxx/logmanager.h>

#include "Peer.h"

namespace {

using namespace benchmarks;
using log4cxx::Logger;
using log4cxx::LoggerPtr;

ByteCounter discarded;

/// The library calls append under the appender's lock.
class DiscardAppender final : public log4cxx::AppenderSkeleton {
public:
    void close() override {}
    bool requiresLayout() const override { return false; }

private:
    void append(const log4cxx::spi::LoggingEventPtr& event, log4cxx::helpers::Pool&) override {
        discarded.add(event->getRenderedMessage().size());
    }
};

const LoggerPtr& logger() {
    static const LoggerPtr logger = [] {
        LoggerPtr made = Logger::getLogger("benchmarks");
        made->addAppender(std::make_shared<DiscardAppender>());
        made->setAdditivity(false); // no search for appenders of the parents
        made->setLevel(log4cxx::Level::getInfo());
        // No search for a configuration file.
        log4cxx::LogManager::getLoggerRepository()->setConfigured(true);
        return made;
    }();
    return logger;
}

struct Log4cxx {
    const LoggerPtr& target = logger();
    const std::string& word = lineWord();

    void logText() { target->info(fortyCharacters); }
    // The macros with fmt, which the library's documentation recommends for speed.
    void logLine(int number) {
        LOG4CXX_INFO_FMT(target, "text {} {} {}", number, lineNumber, word);
    }
    bool isDebugActive() { return Logger::isDebugEnabledFor(target); }
    void logDebugLine(int number) {
        LOG4CXX_DEBUG_FMT(target, "text {} {} {}", number, lineNumber, word);
    }

    static void prepareNames() {
        logger();
        forAllNames([](const std::string& name) { Logger::getLogger(name); });
    }
    LoggerPtr find(const std::string& name) { return Logger::getLogger(name); }

    static ByteCounter& counter() { return discarded; }
};

} // namespace

void benchmarkRows(std::vector<Row>& rows) {
    rows = SubjectRows<Log4cxx>{Role::Peer, "log4cxx"}.all();
}
