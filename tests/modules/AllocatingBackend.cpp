// A plug-in whose entry point needs memory of its own, and whose name is longer than a short
// string.

#include <memory>
#include <string>

#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

class Backend final : public LoggerBackend {
public:
    LoggingChannel* createChannel(const char*) override { return nullptr; }
};

Backend backend;

} // namespace

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    const auto needed = std::make_unique<std::string>("longer than what a string holds by itself");
    return needed->empty() ? nullptr : &backend;
}
