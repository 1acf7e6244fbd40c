#include "live/ProbeBackend.h"

#include <utility>

#include "Text.h"

namespace backendcheck {

using ZOL::Framework::GenericLogger::LoggingChannel;
using ZOL::Framework::GenericLogger::LoggingLevel;

ProbeBackend::ProbeBackend(std::function<void()> tooMany) : tooMany_(std::move(tooMany)) {}

LoggingChannel* ProbeBackend::createChannel(const char* name) {
    count();
    return endsWith(name, declinedEnd) ? nullptr : &channel_;
}

void ProbeBackend::count() {
    if (--left_ < 0) {
        tooMany_();
    }
}

void ProbeBackend::Channel::log(LoggingLevel, const char*) {
    probe_.count();
    ++probe_.messages_;
    if (probe_.work_) {
        std::exchange(probe_.work_, nullptr)();
    }
}

} // namespace backendcheck
