#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <deque>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "ZOL/Framework/Export.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "ZOL/Testing/CapturedMessage.h"

namespace ZOL::Testing::detail {

/// The back end of all CapturedLogs of a module. It is installed by the first one and stays
/// installed until the process ends, because loggers keep its channels. Without a CapturedLog it
/// drops all messages.
///
/// Calls that take the logging lock are made without mutex_: createChannel and log run with the
/// logging lock held and lock mutex_. The level functions of a logger take no lock.
class ZOL_FRAMEWORK_HIDDEN CaptureBackend final : public Framework::GenericLogger::LoggerBackend {
public:
    using Messages = std::deque<CapturedMessage>;

    CaptureBackend() = default;
    CaptureBackend(const CaptureBackend&) = delete;
    CaptureBackend& operator=(const CaptureBackend&) = delete;

    /// Protects the messages of all CapturedLogs of the module. A mutex of each one would never be
    /// freed by a standard library that allocates mutexes at their first use.
    std::mutex& mutex() { return mutex_; }

    /// From now on, messages receives every message, and all loggers are open for all levels. If
    /// it throws, there is no change.
    void start(Messages& messages) {
        {
            const std::lock_guard<std::mutex> lock(mutex_);
            captures_.push_back(&messages);
        }
        try {
            install();
            findLoggers();
        } catch (...) {
            stop(messages);
            throw;
        }
        const std::lock_guard<std::mutex> lock(mutex_);
        for (auto& [name, entry] : loggers_) {
            if (entry.logger != nullptr) {
                open(entry);
            }
        }
    }

    /// Ends what start began. The last one restores the minimum levels.
    void stop(const Messages& messages) {
        const std::lock_guard<std::mutex> lock(mutex_);
        captures_.erase(std::find(captures_.begin(), captures_.end(), &messages));
        if (captures_.empty()) {
            for (auto& [name, entry] : loggers_) {
                close(entry);
            }
        }
    }

    Framework::GenericLogger::LoggingChannel* createChannel(const char* name) override {
        std::unique_lock<std::mutex> lock(mutex_);
        auto known = loggers_.find(name);
        if (known == loggers_.end()) {
            // Not try_emplace: it refers to an object of the standard library that, on Linux,
            // would keep the module from being unloaded.
            known = loggers_.emplace(name, KnownLogger(*this)).first;
            known->second.channel.name = &known->first;
        }
        KnownLogger& entry = known->second;
        if (entry.logger == nullptr && !entry.isBeingMade && isInstalled_ && !captures_.empty()) {
            // A new logger. It is opened before the caller of getLogger receives it. The
            // framework keeps the logger that the inner call makes.
            entry.isBeingMade = true;
            lock.unlock();
            Framework::GenericLogger::Logger* logger = nullptr;
            try {
                logger = Framework::GenericLogger::Logger::getLogger(name);
            } catch (...) {
                lock.lock();
                entry.isBeingMade = false;
                throw;
            }
            lock.lock();
            entry.logger = logger;
            if (!captures_.empty()) {
                entry.isNew = true;
                open(entry);
            }
        }
        return &entry.channel;
    }

private:
    using Logger = Framework::GenericLogger::Logger;
    using LoggingLevel = Framework::GenericLogger::LoggingLevel;

    struct KnownLogger;

    class Channel final : public Framework::GenericLogger::LoggingChannel {
    public:
        explicit Channel(CaptureBackend& backend) : backend_(backend) {}

        void release() override {}
        void log(LoggingLevel level, const char* text) override {
            backend_.receive(level, *name, text);
        }

        const std::string* name = nullptr; // the key of the logger's entry

    private:
        CaptureBackend& backend_;
    };

    struct KnownLogger {
        explicit KnownLogger(CaptureBackend& backend) : channel(backend) {}

        Channel channel;
        Logger* logger = nullptr;                // null until a CapturedLog needs it
        bool isBeingMade = false;                // an inner getLogger is running
        bool isNew = false;                      // made while a CapturedLog existed
        std::optional<LoggingLevel> levelBefore; // set while the logger is open
    };

    static constexpr auto lowestLevel = static_cast<LoggingLevel>(std::numeric_limits<int>::min());

    void install() {
        const std::lock_guard<std::mutex> oneInstallation(installationMutex_);
        if (isInstalled_) {
            return;
        }
        try {
            Logger::installBackend(this);
        } catch (...) {
            // The next CapturedLog installs it again: this installation may have missed loggers.
            Logger::uninstallBackend(this);
            throw;
        }
        isInstalled_ = true;
    }

    /// Finds the loggers whose channels were created while there was no CapturedLog.
    void findLoggers() {
        std::unique_lock<std::mutex> lock(mutex_);
        // Entries are never erased, so that the iterator stays valid.
        for (auto known = loggers_.begin(); known != loggers_.end(); ++known) {
            if (known->second.logger == nullptr) {
                lock.unlock();
                Logger* const logger = Logger::getLogger(known->first.c_str());
                lock.lock();
                known->second.logger = logger;
            }
        }
    }

    /// There is no getter. Searches for the lowest active level.
    static LoggingLevel minimumLevel(Logger& logger) {
        long long low = std::numeric_limits<int>::min();
        long long high = std::numeric_limits<int>::max(); // always active
        while (low < high) {
            const long long middle = low + (high - low) / 2;
            if (logger.isLevelActive(static_cast<LoggingLevel>(middle))) {
                high = middle;
            } else {
                low = middle + 1;
            }
        }
        return static_cast<LoggingLevel>(low);
    }

    static void open(KnownLogger& entry) {
        const LoggingLevel level = minimumLevel(*entry.logger);
        if (!entry.levelBefore || (entry.isNew && level != lowestLevel)) {
            entry.levelBefore = level;
        }
        entry.logger->minLogLevel(lowestLevel);
    }

    static void close(KnownLogger& entry) {
        // A level that the program set for its new logger stays.
        if (entry.levelBefore && (!entry.isNew || minimumLevel(*entry.logger) == lowestLevel)) {
            entry.logger->minLogLevel(*entry.levelBefore);
        }
        entry.levelBefore.reset();
        entry.isNew = false;
    }

    void receive(LoggingLevel level, const std::string& logger, const char* text) {
        const std::lock_guard<std::mutex> lock(mutex_);
        std::size_t received = 0;
        try {
            for (; received < captures_.size(); ++received) {
                captures_[received]->push_back({level, logger, text});
            }
        } catch (...) {
            // The caller that logged receives the exception: the message is in none of them.
            while (received-- > 0) {
                captures_[received]->pop_back();
            }
            throw;
        }
    }

    std::mutex installationMutex_; // locked before the logging lock
    std::mutex mutex_;             // locked after the logging lock
    std::atomic<bool> isInstalled_ = false;
    std::vector<Messages*> captures_; // the switch: messages are dropped while it is empty
    std::map<std::string, KnownLogger> loggers_;
};

/// One object of a class for each module, made at its first use and never destroyed.
template <typename Object>
class ZOL_FRAMEWORK_HIDDEN OnePerModule {
public:
    static Object& get() {
        Object* object = object_.load(std::memory_order_acquire);
        if (object == nullptr) {
            auto made = std::make_unique<Object>();
            if (object_.compare_exchange_strong(object, made.get())) {
                object = made.release();
            }
        }
        return *object;
    }

private:
    static std::atomic<Object*> object_;
};

template <typename Object>
std::atomic<Object*> OnePerModule<Object>::object_{nullptr};

} // namespace ZOL::Testing::detail
