#include <memory>
#include <string>

#include <log4cxx/helpers/pool.h>
#include <log4cxx/logger.h>
#include <log4cxx/logmanager.h>
#include <log4cxx/patternlayout.h>
#include <log4cxx/rolling/fixedwindowrollingpolicy.h>
#include <log4cxx/rolling/rollingfileappender.h>
#include <log4cxx/rolling/sizebasedtriggeringpolicy.h>

#include "FilePeer.h"

namespace {

using namespace benchmarks;
using log4cxx::Logger;
using log4cxx::LoggerPtr;

void open(const char* path, bool isFlushed) {
    const auto window = std::make_shared<log4cxx::rolling::FixedWindowRollingPolicy>();
    window->setFileNamePattern(std::string(path) + ".%i");
    const auto trigger = std::make_shared<log4cxx::rolling::SizeBasedTriggeringPolicy>();
    trigger->setMaxFileSize(static_cast<std::size_t>(fileRotationBytes));

    const auto appender = std::make_shared<log4cxx::rolling::RollingFileAppender>();
    appender->setLayout(std::make_shared<log4cxx::PatternLayout>(
        LOG4CXX_STR("%d{yyyy-MM-dd HH:mm:ss.SSS} %p [%c] %m%n")));
    appender->setFile(path);
    appender->setRollingPolicy(window);
    appender->setTriggeringPolicy(trigger);
    appender->setBufferedIO(!isFlushed);
    appender->setImmediateFlush(isFlushed);
    log4cxx::helpers::Pool pool;
    appender->activateOptions(pool);

    const LoggerPtr logger = Logger::getLogger(fileLogger);
    logger->addAppender(appender);
    logger->setAdditivity(false); // no search for appenders of the parents
    logger->setLevel(log4cxx::Level::getInfo());
    // No search for a configuration file.
    log4cxx::LogManager::getLoggerRepository()->setConfigured(true);
}

void close() {
    log4cxx::LogManager::shutdown();
}

struct Log4cxx {
    const LoggerPtr target = Logger::getLogger(fileLogger);

    void logText() { target->info(fortyCharacters); }
};

} // namespace

void benchmarkFileSubject(FileSubject& subject) {
    subject = {open, logTimed<Log4cxx>, close};
}
