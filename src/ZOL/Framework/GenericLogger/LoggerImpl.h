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

/// The private block of a logger. All operations except isLevelActive, minLevel, isEnabled and
/// enable are called with loggerMutex held.
///
/// Loops over channels and cache call plug-ins, which may call the same logger again. These loops
/// therefore use indexes and read the size in each step.
class LoggerImpl {
public:
    explicit LoggerImpl(const char* name);
    LoggerImpl(const LoggerImpl&) = delete;
    LoggerImpl& operator=(const LoggerImpl&) = delete;

    /// Calls release on every channel.
    ~LoggerImpl();

    /// Opens the channels of these back ends and delivers the cache to them. The list is a copy,
    /// because a back end may change the installed ones during the call.
    void connect(std::vector<LoggerBackend*> backends);

    bool hasChannels() const { return !channels_.empty(); }

    /// Drops the channels without calling them.
    void forgetChannels() { channels_.clear(); }

    void deliverToChannels(LoggingLevel level, const char* text) {
        for (std::size_t i = 0; i < channels_.size(); ++i) {
            channels_[i]->log(level, text);
        }
    }

    void cacheMessage(LoggingLevel level, const char* text);

    // Called without the lock: single relaxed reads and writes.
    bool isLevelActive(LoggingLevel level) const {
        return level >= minLevel_.load(std::memory_order_relaxed);
    }
    void minLevel(LoggingLevel level) { minLevel_.store(level, std::memory_order_relaxed); }
    bool isEnabled() const { return enabled_.load(std::memory_order_relaxed); }
    void enable(bool enable) { enabled_.store(enable, std::memory_order_relaxed); }

private:
    class FlushScope;

    void updateChannels(std::vector<LoggerBackend*> backends);
    void flushCache();

    /// Returns whether every channel received the entry. False means that an inner flush delivered
    /// and removed it.
    bool deliverEntry(std::size_t entry);

    std::vector<LoggingChannel*> channels_;
    std::string name_;
    std::vector<CachedMessage> cache_;
    int cacheOverflowed_ = 0;
    std::atomic<LoggingLevel> minLevel_{LOG_LEVEL_DEFAULT};
    std::atomic<bool> enabled_{true};
    int flushDepth_ = 0;                              // flushes in progress on this logger
    std::vector<std::vector<CachedMessage>> flushed_; // removed from the cache by inner flushes
};

} // namespace ZOL::Framework::GenericLogger
