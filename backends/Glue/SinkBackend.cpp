#include "SinkBackend.h"

#include <exception>
#include <utility>

#include "Complaint.h"

namespace ZOL::Backends {

const char* const stampedLine = "%Y-%m-%d %H:%M:%S.%e %^%v%$";

SinkBackend::SinkBackend(const Settings& settings, SinkPlan plan)
    : rules_(settings.levels("levels")),
      sink_(settings.backend(), std::move(plan.make), settings.text("pattern", plan.pattern),
            plan.lineEnd, plan.pause),
      longestLine_(plan.longestLine) {}

Framework::GenericLogger::LoggingChannel* SinkBackend::createChannel(const char* name) {
    try {
        std::unique_ptr<SinkChannel>& channel = channels_[name];
        if (channel == nullptr) {
            channel = std::make_unique<SinkChannel>(name, sink_, rules_, longestLine_);
        }
        return channel.get();
    } catch (...) {
        sink_.lose("there is no memory for a channel");
        return nullptr;
    }
}

namespace {

/// Speaks for the back end when the plug-in is cleaned up.
struct Farewell {
    explicit Farewell(const SinkBackend& speaker) : backend(speaker) {}
    Farewell(const Farewell&) = delete;
    Farewell& operator=(const Farewell&) = delete;
    ~Farewell() { backend.sayFarewell(); }

    const SinkBackend& backend;
};

} // namespace

SinkBackend* makeSinkBackend(const char* name, SinkPlan (*plan)(const Settings&)) noexcept {
    try {
        const Settings settings(name);
        auto* const backend = new SinkBackend(settings, plan(settings));
        static const Farewell farewell(*backend);
        return backend;
    } catch (const std::exception& error) {
        complain(name, error.what());
    } catch (...) {
        complain(name, "cannot be made");
    }
    return nullptr;
}

} // namespace ZOL::Backends
