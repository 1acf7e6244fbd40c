#pragma once

#include <atomic>
#include <cstring>
#include <functional>
#include <utility>

#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

namespace backendcheck {

/// The tool's own back end, installed beside the plug-in: counts the calls that the plug-in causes,
/// and runs code under the logging lock.
///
/// Never destroyed, nor is its channel: loggers may use them while the process ends.
class ProbeBackend final : public ZOL::Framework::GenericLogger::LoggerBackend {
public:
    /// @param onLimit called when there are more messages or loggers than allowed; does not return.
    explicit ProbeBackend(std::function<void()> onLimit) : onLimit_(std::move(onLimit)) {}

    /// Loggers with that in their names are declined: their messages are cached.
    static constexpr const char* declinedPart = ".waiting";

    ZOL::Framework::GenericLogger::LoggingChannel* createChannel(const char* name) override {
        countCall();
        return std::strstr(name, declinedPart) != nullptr ? nullptr : &channel_;
    }

    /// How many calls are allowed from now on.
    void allow(int calls) { left_ = calls; }

    int messages() const { return messages_; }

    /// Runs it once, in the next message: under the logging lock, as plug-ins are called.
    void runInNextMessage(std::function<void()> work) { work_ = std::move(work); }

private:
    class Channel final : public ZOL::Framework::GenericLogger::LoggingChannel {
    public:
        explicit Channel(ProbeBackend& probe) : probe_(probe) {}
        void release() override {}
        void log(ZOL::Framework::GenericLogger::LoggingLevel, const char*) override {
            probe_.countCall();
            ++probe_.messages_;
            if (probe_.work_) {
                std::exchange(probe_.work_, nullptr)();
            }
        }

    private:
        ProbeBackend& probe_;
    };

    void countCall() {
        if (--left_ < 0) {
            onLimit_();
        }
    }

    std::function<void()> onLimit_;
    std::function<void()> work_;
    std::atomic<int> left_{0};
    std::atomic<int> messages_{0};
    Channel channel_{*this};
};

} // namespace backendcheck
