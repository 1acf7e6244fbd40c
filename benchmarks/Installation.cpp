#include "Installation.h"

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/Management/MemoryManager.h"

#include "backend/Discarded.h"
#include "far/ChannelGiver.h"
#include "far/FarSide.h"

using ZOL::Framework::GenericLogger::Logger;
namespace MemoryManager = ZOL::Framework::Management::MemoryManager;

namespace benchmarks {

namespace {

std::string nameOf(std::size_t number) {
    return "orders.page." + std::to_string(number);
}

} // namespace

ProductLoggers::ProductLoggers() : backend_(Logger::loadBackend("BenchmarkDiscard")) {}

void ProductLoggers::growTo(std::size_t count) {
    while (loggers_.size() < count) {
        loggers_.push_back(Logger::getLogger(nameOf(loggers_.size()).c_str()));
    }
}

void ProductLoggers::cache(const std::string& text) {
    for (Logger* const logger : loggers_) {
        for (std::size_t i = 0; i < cachedMessages; ++i) {
            logger->info(text.c_str());
        }
    }
}

void ProductLoggers::install() {
    Logger::installBackend(backend_);
}

void ProductLoggers::uninstall() {
    Logger::uninstallBackend(backend_);
}

FarSide& ProductLoggers::farSide() const {
    return *static_cast<FarSide*>(MemoryManager::findObject(discardedName));
}

void BareLoggers::growTo(std::size_t count) {
    while (loggers_.size() < count) {
        loggers_.emplace(nameOf(loggers_.size()), Bare());
    }
}

void BareLoggers::cache(const std::string& text) {
    for (auto& [name, logger] : loggers_) {
        logger.cached.assign(cachedMessages, text);
    }
}

void BareLoggers::install() {
    const boost::recursive_mutex::scoped_lock locked(lock_);
    for (auto& [name, logger] : loggers_) {
        logger.channels.clear();
        logger.channels.push_back(channelGiver().channelFor(name.c_str()));
        for (const std::string& text : logger.cached) {
            for (TextTaker* const channel : logger.channels) {
                channel->take(0, text.c_str());
            }
        }
        logger.cached.clear();
    }
}

FarSide& BareLoggers::farSide() const {
    return textTaker().farSide();
}

} // namespace benchmarks
