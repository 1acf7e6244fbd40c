#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

namespace support {

/// What a channel was handed, as one line: "<backend>/<logger> <level> <text>".
using Journal = std::vector<std::string>;

/// A back end whose channels write down every call. The hooks run before the call is written down.
class RecordingBackend : public ZOL::Framework::GenericLogger::LoggerBackend {
public:
    using LoggingLevel = ZOL::Framework::GenericLogger::LoggingLevel;

    RecordingBackend(std::string name, Journal& journal);
    ~RecordingBackend() override;

    ZOL::Framework::GenericLogger::LoggingChannel* createChannel(const char* name) override;

    /// Serves the loggers whose name passes; all by default.
    std::function<bool(const std::string& logger)> serves;
    std::function<void(const std::string& logger)> beforeCreate;
    std::function<void(const std::string& logger, LoggingLevel level, const char* text)> beforeLog;

    /// Names that createChannel was asked for, in order.
    std::vector<std::string> asked;
    int releases = 0;

private:
    class Channel;

    std::string name_;
    Journal& journal_;
    std::vector<std::unique_ptr<Channel>> channels_;
};

} // namespace support
