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

std::size_t bytes = 0;

/// The library calls append under the appender's lock.
class DiscardingAppender final : public log4cplus::Appender {
public:
    ~DiscardingAppender() override { destructorImpl(); }
    void close() override {}

private:
    void append(const log4cplus::spi::InternalLoggingEvent& event) override {
        bytes += event.getMessage().size();
    }
};

Logger& logger() {
    static Logger logger = [] {
        Logger made = Logger::getInstance("benchmarks");
        made.addAppender(log4cplus::SharedAppenderPtr(new DiscardingAppender));
        made.setAdditivity(false); // no search for appenders of the parents
        made.setLogLevel(log4cplus::INFO_LOG_LEVEL);
        return made;
    }();
    return logger;
}

struct Log4cplus {
    static void runText(std::size_t n) {
        const Logger& target = logger();
        for (std::size_t i = 0; i < n; ++i) {
            LOG4CPLUS_INFO_STR(target, fortyCharacters);
        }
    }

    static void runLine(std::size_t n) {
        const Logger& target = logger();
        const std::string& word = lineWord();
        for (std::size_t i = 0; i < n; ++i) {
            LOG4CPLUS_INFO(target,
                           lineStart << static_cast<int>(i) << ' ' << lineNumber << ' ' << word);
        }
    }

    static void runAsked(std::size_t n) {
        const Logger& target = logger();
        for (std::size_t i = 0; i < n; ++i) {
            keep(target.isEnabledFor(log4cplus::DEBUG_LOG_LEVEL));
        }
    }

    static void runOffLine(std::size_t n) {
        const Logger& target = logger();
        const std::string& word = lineWord();
        for (std::size_t i = 0; i < n; ++i) {
            LOG4CPLUS_DEBUG(target,
                            lineStart << static_cast<int>(i) << ' ' << lineNumber << ' ' << word);
        }
    }

    static void prepareNames() {
        forAllNames([](const std::string& name) { Logger::getInstance(name); });
    }

    template <std::size_t length>
    static void runNames(std::size_t n) {
        inTurn<length>(n, [](const std::string& name) { keep(Logger::getInstance(name)); });
    }

    static std::size_t totalBytes() { return bytes; }
};

} // namespace

Rows benchmarkRows() {
    return rowsOfPeer<Log4cplus>("log4cplus");
}
