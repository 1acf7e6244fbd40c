#pragma once

#include <atomic>
#include <functional>
#include <string>

#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

namespace backendcheck {

/// The checker's own back end, installed beside the plug-in: sees what the plug-in's channels make
/// the framework do, and has the logging lock in its hands when it is called.
///
/// Never destroyed, like its channel: loggers may use it while the process ends.
class ProbeBackend final : public ZOL::Framework::GenericLogger::LoggerBackend {
public:
    /// @param tooMany called if there are ever more messages or loggers than allowed; does not
    ///     return.
    explicit ProbeBackend(std::function<void()> tooMany);

    /// Loggers whose names end so are declined, so that messages wait in them.
    static constexpr const char* declinedEnd = ".waiting";

    ZOL::Framework::GenericLogger::LoggingChannel* createChannel(const char* name) override;

    /// How many calls may come from now on.
    void allow(int calls) { left_ = calls; }

    int messages() const { return messages_; }

    /// Is run once, by the next message: with the lock held, as plug-ins are called.
    void runInNextMessage(std::function<void()> work) { work_ = std::move(work); }

private:
    class Channel final : public ZOL::Framework::GenericLogger::LoggingChannel {
    public:
        explicit Channel(ProbeBackend& witness) : probe_(witness) {}
        void release() override {}
        void log(ZOL::Framework::GenericLogger::LoggingLevel level, const char* text) override;

    private:
        ProbeBackend& probe_;
    };

    void count();

    std::function<void()> tooMany_;
    std::function<void()> work_;
    std::atomic<int> left_{0};
    std::atomic<int> messages_{0};
    Channel channel_{*this};
};

} // namespace backendcheck
