#pragma once

#include <map>
#include <string>

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "ZOL/Framework/GenericLogger/LoggerBackendLoadError.h"

namespace TwoModules {

/// Installed in place of another back end, to record which channel that one opens for each logger.
/// Messages go to those channels directly.
class WatchedBackend : public ZOL::Framework::GenericLogger::LoggerBackend {
public:
    /// @param backend must outlive the object.
    explicit WatchedBackend(LoggerBackend& backend) : backend_(backend) {}
    WatchedBackend(const WatchedBackend&) = delete;
    WatchedBackend& operator=(const WatchedBackend&) = delete;
    ~WatchedBackend() override { ZOL::Framework::GenericLogger::Logger::uninstallBackend(this); }

    ZOL::Framework::GenericLogger::LoggingChannel* createChannel(const char* logger) override {
        return channels_[logger] = backend_.createChannel(logger);
    }

    /// By logger; null if the back end declined the logger.
    const std::map<std::string, ZOL::Framework::GenericLogger::LoggingChannel*>& channels() const {
        return channels_;
    }

    /// The framework refuses to install a back end twice. One that is not installed is installed
    /// by this call.
    bool isInstalled() {
        try {
            ZOL::Framework::GenericLogger::Logger::installBackend(this);
        } catch (const ZOL::Framework::GenericLogger::LoggerBackendLoadError&) {
            return true;
        }
        return false;
    }

private:
    LoggerBackend& backend_;
    std::map<std::string, ZOL::Framework::GenericLogger::LoggingChannel*> channels_;
};

} // namespace TwoModules
