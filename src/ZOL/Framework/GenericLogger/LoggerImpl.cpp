#include "ZOL/Framework/GenericLogger/LoggerImpl.h"

#include <utility>

#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

namespace ZOL::Framework::GenericLogger {

namespace {

// If the cache has more entries than this, the overflow entry replaces the next message.
constexpr std::size_t overflowThreshold = 100;
constexpr std::size_t maxEntries = overflowThreshold + 2;

constexpr LoggingLevel overflowLevel = LOG_LEVEL_WARNING;
constexpr const char* overflowText = "LOG Cache overflow...";

} // namespace

LoggerImpl::LoggerImpl(const char* name) : name_(name) {}

LoggerImpl::~LoggerImpl() {
    for (std::size_t i = 0; i < channels_.size(); ++i) {
        channels_[i]->release();
    }
}

void LoggerImpl::connect(std::vector<LoggerBackend*> backends) {
    updateChannels(std::move(backends));
    flushCache();
}

void LoggerImpl::cacheMessage(LoggingLevel level, const char* text) {
    if (cacheOverflowed_ == 1) {
        return;
    }
    // Never reallocated: a channel that logs during a flush must not invalidate the text that it
    // received.
    cache_.reserve(maxEntries);
    if (cache_.size() > overflowThreshold) {
        cache_.push_back({overflowLevel, overflowText});
        cacheOverflowed_ = 1;
        return;
    }
    cache_.push_back({level, text});
}

// A channel may flush the same cache again, by installing a back end. The entries that such an
// inner flush removes stay in memory until the outermost flush ends: the channel is still reading
// one.
class LoggerImpl::FlushScope {
public:
    explicit FlushScope(LoggerImpl& logger) : logger_(logger) { ++logger_.flushDepth_; }
    FlushScope(const FlushScope&) = delete;
    FlushScope& operator=(const FlushScope&) = delete;
    ~FlushScope() {
        if (--logger_.flushDepth_ == 0) {
            logger_.flushed_.clear();
        }
    }

    bool isInner() const { return logger_.flushDepth_ > 1; }

private:
    LoggerImpl& logger_;
};

void LoggerImpl::flushCache() {
    const FlushScope flush(*this);
    for (std::size_t entry = 0; entry < cache_.size();) {
        // After an inner flush, the cache contains only what was cached since.
        entry = deliverEntry(entry) ? entry + 1 : 0;
    }
    if (flush.isInner() && !cache_.empty()) {
        flushed_.push_back(std::move(cache_));
    }
    cache_.clear();
    cacheOverflowed_ = 0;
}

bool LoggerImpl::deliverEntry(std::size_t entry) {
    const std::size_t innerFlushes = flushed_.size();
    for (std::size_t i = 0; i < channels_.size(); ++i) {
        channels_[i]->log(cache_[entry].level, cache_[entry].text.c_str());
        if (flushed_.size() != innerFlushes) {
            return false;
        }
    }
    return true;
}

void LoggerImpl::updateChannels(std::vector<LoggerBackend*> backends) {
    channels_.clear();
    for (std::size_t i = 0; i < backends.size(); ++i) {
        LoggingChannel* const channel = backends[i]->createChannel(name_.c_str());
        if (channel != nullptr) {
            channels_.push_back(channel);
        }
    }
}

} // namespace ZOL::Framework::GenericLogger
