#include <fmt/format.h>
#include <log4cxx/appenderskeleton.h>
#include <log4cxx/logger.h>
#include <log4cxx/logmanager.h>

#include "../Names.h"
#include "../Texts.h"
#include "../TwoThreads.h"
#include "../Works.h"
#include "Peer.h"

namespace {

using namespace benchmarks;
using log4cxx::Logger;
using log4cxx::LoggerPtr;

std::size_t bytes = 0;

/// Called with the lock that every appender of this library takes.
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
        made->setAdditivity(false); // or it would look for appenders further up
        made->setLevel(log4cxx::Level::getInfo());
        // Or the library would look for a configuration.
        log4cxx::LogManager::getLoggerRepository()->setConfigured(true);
        return made;
    }();
    return logger;
}

void runText(std::size_t n) {
    const LoggerPtr& target = logger();
    for (std::size_t i = 0; i < n; ++i) {
        target->info(fortyCharacters);
    }
}

// With fmt, which the library's documentation recommends for speed.
void runLine(std::size_t n) {
    const LoggerPtr& target = logger();
    const std::string& word = lineWord();
    for (std::size_t i = 0; i < n; ++i) {
        LOG4CXX_INFO_FMT(target, "text {} {} {}", static_cast<int>(i), lineNumber, word);
    }
}

void runAsked(std::size_t n) {
    const LoggerPtr& target = logger();
    for (std::size_t i = 0; i < n; ++i) {
        keep(Logger::isDebugEnabledFor(target));
    }
}

void runOffLine(std::size_t n) {
    const LoggerPtr& target = logger();
    const std::string& word = lineWord();
    for (std::size_t i = 0; i < n; ++i) {
        LOG4CXX_DEBUG_FMT(target, "text {} {} {}", static_cast<int>(i), lineNumber, word);
    }
}

void prepareNames() {
    logger();
    forAllNames([](const std::string& name) { Logger::getLogger(name); });
}

template <std::size_t length>
void runNames(std::size_t n) {
    inTurn<length>(n, [](const std::string& name) { keep(Logger::getLogger(name)); });
}

std::size_t taken() {
    return bytes;
}

constexpr const char* subject = "log4cxx";

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
