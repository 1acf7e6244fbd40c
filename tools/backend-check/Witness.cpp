#include "Witness.h"

#include <utility>

#include "Words.h"

namespace backendcheck {

using ZOL::Framework::GenericLogger::LoggingChannel;
using ZOL::Framework::GenericLogger::LoggingLevel;

Witness::Witness(std::function<void()> tooMany) : tooMany_(std::move(tooMany)) {}

LoggingChannel* Witness::createChannel(const char* name) {
    count();
    return endsWith(name, declinedEnd) ? nullptr : &channel_;
}

void Witness::count() {
    if (--left_ < 0) {
        tooMany_();
    }
}

void Witness::Channel::log(LoggingLevel, const char*) {
    witness_.count();
    ++witness_.messages_;
    if (witness_.work_) {
        std::exchange(witness_.work_, nullptr)();
    }
}

} // namespace backendcheck
