#include <log4cplus/appender.h>
#include <log4cplus/initializer.h>
#include <log4cplus/logger.h>
#include <log4cplus/loggingmacros.h>
#include <log4cplus/spi/loggingevent.h>

#include "Peer.h"

namespace {

using namespace benchmarks;
using log4cplus::Logger;

const log4cplus::Initializer initializer;

ByteCounter discarded;

/// The library calls append under the appender's lock.
class DiscardAppender final : public log4cplus::Appender {
public:
    ~DiscardAppender() override { destructorImpl(); }
    void close() override {}

private:
    void append(const log4cplus::spi::InternalLoggingEvent& event) override {
        discarded.add(event.getMessage().size());
    }
};

Logger& logger() {
    static Logger logger = [] {
        Logger made = Logger::getInstance("benchmarks");
        made.addAppender(log4cplus::SharedAppenderPtr(new DiscardAppender));
        made.setAdditivity(false); // no search for appenders of the parents
        made.setLogLevel(log4cplus::INFO_LOG_LEVEL);
        return made;
    }();
    return logger;
}

struct Log4cplus {
    const Logger& target = logger();
    const std::string& word = lineWord();

    void logText() { LOG4CPLUS_INFO_STR(target, fortyCharacters); }
    void logLine(int number) {
        LOG4CPLUS_INFO(target, lineStart << number << ' ' << lineNumber << ' ' << word);
    }
    bool isDebugActive() { return target.isEnabledFor(log4cplus::DEBUG_LOG_LEVEL); }
    void logDebugLine(int number) {
        LOG4CPLUS_DEBUG(target, lineStart << number << ' ' << lineNumber << ' ' << word);
    }

    static void prepareNames() {
        forAllNames([](const std::string& name) { Logger::getInstance(name); });
    }
    Logger find(const std::string& name) { return Logger::getInstance(name); }

    static ByteCounter& counter() { return discarded; }
};

} // namespace

void benchmarkRows(std::vector<Row>& rows) {
    rows = SubjectRows<Log4cplus>{Role::Peer, "log4cplus"}.all();
}
