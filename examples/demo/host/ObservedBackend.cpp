#include "host/ObservedBackend.h"

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackendLoadError.h"

using namespace ZOL::Framework::GenericLogger;

namespace Demo {

ObservedBackend::ObservedBackend(LoggerBackend& observed) : observed_(observed) {}

LoggingChannel* ObservedBackend::createChannel(const char* name) {
    return channels_[name] = observed_.createChannel(name);
}

bool isInstalled(LoggerBackend& backend) {
    try {
        Logger::installBackend(&backend);
    } catch (const LoggerBackendLoadError&) {
        return true;
    }
    Logger::uninstallBackend(&backend);
    return false;
}

} // namespace Demo
