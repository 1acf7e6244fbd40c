#include <memory>

#include <log4cplus/fileappender.h>
#include <log4cplus/initializer.h>
#include <log4cplus/layout.h>
#include <log4cplus/logger.h>
#include <log4cplus/loggingmacros.h>

#include "FilePeer.h"

namespace {

using namespace benchmarks;
using log4cplus::Logger;

const log4cplus::Initializer initializer;

void open(const char* path, bool isFlushed) {
    constexpr int maxFiles = 5;
    const log4cplus::SharedAppenderPtr appender(
        new log4cplus::RollingFileAppender(path, fileRotationBytes, maxFiles, isFlushed));
    appender->setLayout(
        std::make_unique<log4cplus::PatternLayout>("%D{%Y-%m-%d %H:%M:%S.%q} %p [%c] %m%n"));
    Logger logger = Logger::getInstance(fileLogger);
    logger.addAppender(appender);
    logger.setAdditivity(false); // no search for appenders of the parents
    logger.setLogLevel(log4cplus::INFO_LOG_LEVEL);
}

void close() {
    Logger::getInstance(fileLogger).removeAllAppenders();
}

struct Log4cplus {
    const Logger target = Logger::getInstance(fileLogger);

    void logText() { LOG4CPLUS_INFO_STR(target, fortyCharacters); }
};

} // namespace

void benchmarkFileSubject(FileSubject& subject) {
    subject = {open, logTimed<Log4cplus>, close};
}
