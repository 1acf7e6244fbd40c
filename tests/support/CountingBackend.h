#pragma once

#include <array>
#include <string_view>

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

namespace support {

/// A back end with one channel, for the loggers whose names start with prefix. Allocates nothing,
/// and must outlive the loggers that know its channel: make it static.
class CountingBackend final : public ZOL::Framework::GenericLogger::LoggerBackend {
public:
    ZOL::Framework::GenericLogger::LoggingChannel* createChannel(const char* name) override {
        ++asked;
        return std::strncmp(name, prefix, std::strlen(prefix)) == 0 ? &channel_ : nullptr;
    }

    const char* prefix = "";
    int asked = 0;

    int logged() const { return channel_.logged; }
    int released() const { return channel_.released; }
    const char* lastText() const { return channel_.lastText.data(); }

private:
    class Channel final : public ZOL::Framework::GenericLogger::LoggingChannel {
    public:
        void release() override { ++released; }
        void log(ZOL::Framework::GenericLogger::LoggingLevel, const char* text) override {
            ++logged;
            const std::string_view whole(text);
            lastText[whole.copy(lastText.data(), lastText.size() - 1)] = '\0';
        }

        int logged = 0;
        int released = 0;
        std::array<char, 2000> lastText = {};
    };

    Channel channel_;
};

/// Keeps a back end installed during its lifetime.
class Installed {
public:
    explicit Installed(CountingBackend& backend) : backend_(backend) {
        ZOL::Framework::GenericLogger::Logger::installBackend(&backend_);
    }
    Installed(const Installed&) = delete;
    Installed& operator=(const Installed&) = delete;
    ~Installed() { ZOL::Framework::GenericLogger::Logger::uninstallBackend(&backend_); }

private:
    CountingBackend& backend_;
};

} // namespace support
