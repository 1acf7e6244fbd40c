#include <log4cplus/appender.h>
#include <log4cplus/initializer.h>
#include <log4cplus/logger.h>
#include <log4cplus/loggingmacros.h>
#include <log4cplus/spi/loggingevent.h>

#include "../Names.h"
#include "../Texts.h"
#include "../TwoThreads.h"
#include "../Works.h"
#include "Peer.h"

namespace {

using namespace benchmarks;
using log4cplus::Logger;

const log4cplus::Initializer initializer;

std::size_t bytes = 0;

/// Called with the lock that every appender of this library takes.
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
        made.setAdditivity(false); // or it would look for appenders further up
        made.setLogLevel(log4cplus::INFO_LOG_LEVEL);
        return made;
    }();
    return logger;
}

void runText(std::size_t n) {
    const Logger& target = logger();
    for (std::size_t i = 0; i < n; ++i) {
        LOG4CPLUS_INFO_STR(target, fortyCharacters);
    }
}

void runLine(std::size_t n) {
    const Logger& target = logger();
    const std::string& word = lineWord();
    for (std::size_t i = 0; i < n; ++i) {
        LOG4CPLUS_INFO(target,
                       lineStart << static_cast<int>(i) << ' ' << lineNumber << ' ' << word);
    }
}

void runAsked(std::size_t n) {
    const Logger& target = logger();
    for (std::size_t i = 0; i < n; ++i) {
        keep(target.isEnabledFor(log4cplus::DEBUG_LOG_LEVEL));
    }
}

void runOffLine(std::size_t n) {
    const Logger& target = logger();
    const std::string& word = lineWord();
    for (std::size_t i = 0; i < n; ++i) {
        LOG4CPLUS_DEBUG(target,
                        lineStart << static_cast<int>(i) << ' ' << lineNumber << ' ' << word);
    }
}

void prepareNames() {
    forAllNames([](const std::string& name) { Logger::getInstance(name); });
}

template <std::size_t length>
void runNames(std::size_t n) {
    inTurn<length>(n, [](const std::string& name) { keep(Logger::getInstance(name)); });
}

std::size_t taken() {
    return bytes;
}

constexpr const char* subject = "log4cplus";

constexpr Row rows[] = {
    {plainText, Role::Peer, subject, runText, nullptr, nullptr, delivered<runText, taken>},
    {plainTextTwoThreads, Role::Peer, subject, onTwoThreads<runText>, nullptr, nullptr,
     delivered<onTwoThreads<runText>, taken>},
    {typedLine, Role::Peer, subject, runLine, nullptr, nullptr, delivered<runLine, taken>},
    {levelAsked, Role::Peer, subject, runAsked},
    {levelOffLine, Role::Peer, subject, runOffLine, nullptr, nullptr, delivered<runOffLine, taken>},
    {shortNames, Role::Peer, subject, runNames<shortNameLength>, prepareNames},
    {longNames, Role::Peer, subject, runNames<longNameLength>, prepareNames},
};

} // namespace

Rows benchmarkRows() {
    return rowsOf(rows);
}
