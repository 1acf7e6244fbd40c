#include "ZOL/Framework/GenericLogger/Logger.h"

#include <memory>
#include <string_view>

#include "ZOL/Framework/GenericLogger/LoggerImpl.h"
#include "ZOL/Framework/StaticObjects.h"

namespace ZOL::Framework::GenericLogger {

Logger::Logger(const char* name) : impl_(new LoggerImpl(name)) {}

Logger::~Logger() {
    delete impl_;
}

Logger* Logger::getLogger(const char* name) {
    const boost::recursive_mutex::scoped_lock lock(loggerMutex);

    const auto known = loggers.find(std::string_view(name));
    if (known != loggers.end()) {
        return known->second;
    }

    // A logger that is not entered into the table is destroyed without calling its channels.
    const auto discard = [](Logger* logger) {
        logger->impl_->forgetChannels();
        delete logger;
    };
    std::unique_ptr<Logger, decltype(discard)> logger(new Logger(name), discard);
    logger->impl_->connect(installedBackends);

    // If a back end called getLogger with this name meanwhile, its logger is in the table and
    // stays.
    const auto [entry, entered] = loggers.emplace(name, logger.get());
    if (entered) {
        (void)logger.release();
    }
    return entry->second;
}

void Logger::do_log(LoggingLevel level, const char* text) {
    const boost::recursive_mutex::scoped_lock lock(loggerMutex);

    if (impl_->hasChannels() && !installedBackends.empty() && level != LOG_LEVEL_NONE) {
        if (impl_->isEnabled()) {
            impl_->deliverToChannels(level, text);
        }
    } else {
        impl_->cacheMessage(level, text);
    }
}

bool Logger::isLevelActive(LoggingLevel level) {
    return impl_->isLevelActive(level);
}

void Logger::minLogLevel(LoggingLevel level) {
    impl_->minLevel(level);
}

void Logger::enableLogging(bool enable) {
    impl_->enable(enable);
}

} // namespace ZOL::Framework::GenericLogger
