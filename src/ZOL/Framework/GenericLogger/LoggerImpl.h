#pragma once

#include <atomic>
#include <cstddef>
#include <string>
#include <vector>

#include "ZOL/Framework/GenericLogger/LoggingChannel.h"
#include "ZOL/Framework/GenericLogger/LoggingLevel.h"

namespace ZOL::Framework::GenericLogger {

class LoggerBackend;

struct CachedMessage {
    LoggingLevel level;
    std::string text;
};

/// The private block of a logger. Everything runs with loggerMutex held, the three level and
/// switch accessors aside.
///
/// Plug-ins are called in the middle of the walks and may come back to the same logger: every walk
/// goes by index and reads the size anew for each step.
class LoggerImpl {
public:
    explicit LoggerImpl(const char* name);
    LoggerImpl(const LoggerImpl&) = delete;
    LoggerImpl& operator=(const LoggerImpl&) = delete;

    /// Releases every channel.
    ~LoggerImpl();

    /// Builds the channels from the back ends of this copy, and delivers the cache to them.
    void connect(std::vector<LoggerBackend*> backends);

    bool hasChannels() const { return !channels_.empty(); }

    /// Forgets the channels without a call on them.
    void forgetChannels() { channels_.clear(); }

    void deliverToChannels(LoggingLevel level, const char* text) {
        for (std::size_t i = 0; i < channels_.size(); ++i) {
            channels_[i]->log(level, text);
        }
    }

    void cacheMessage(LoggingLevel level, const char* text);

    // Single reads and writes that order nothing: no lock is held for these.
    bool isLevelActive(LoggingLevel level) const {
        return level >= minLevel_.load(std::memory_order_relaxed);
    }
    void minLevel(LoggingLevel level) { minLevel_.store(level, std::memory_order_relaxed); }
    bool isEnabled() const { return enabled_.load(std::memory_order_relaxed); }
    void enable(bool enable) { enabled_.store(enable, std::memory_order_relaxed); }

private:
    void updateChannels(std::vector<LoggerBackend*> backends);
    void flushCache();

    std::vector<LoggingChannel*> channels_;
    std::string name_;
    std::vector<CachedMessage> cache_;
    int cacheOverflowed_ = 0;
    std::atomic<LoggingLevel> minLevel_{LOG_LEVEL_DEFAULT};
    std::atomic<bool> enabled_{true};
};

} // namespace ZOL::Framework::GenericLogger
