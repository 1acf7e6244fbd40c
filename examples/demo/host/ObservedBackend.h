#pragma once

#include <map>
#include <string>

#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

namespace Demo {

/// Stands in the list of back ends for another one, to see which loggers ask that for a channel and
/// what they get. The channels themselves are the other one's: messages go to them directly.
class ObservedBackend : public ZOL::Framework::GenericLogger::LoggerBackend {
public:
    /// @param observed must outlive the object, and is to be installed through it alone.
    explicit ObservedBackend(LoggerBackend& observed);

    ZOL::Framework::GenericLogger::LoggingChannel* createChannel(const char* name) override;

    /// For each logger by its name, what it was answered last: its channel, or null if it was
    /// declined. Changes with every new logger and every installation, of whatever back end.
    const std::map<std::string, ZOL::Framework::GenericLogger::LoggingChannel*>& channels() const {
        return channels_;
    }

private:
    LoggerBackend& observed_;
    std::map<std::string, ZOL::Framework::GenericLogger::LoggingChannel*> channels_;
};

/// Whether a back end is installed: one that is there is refused a second place. One that is not is
/// installed for a moment, and every logger's cache is delivered to it.
bool isInstalled(ZOL::Framework::GenericLogger::LoggerBackend& backend);

} // namespace Demo
