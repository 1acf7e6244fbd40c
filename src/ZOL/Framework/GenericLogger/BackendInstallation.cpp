#include <algorithm>

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackendLoadError.h"
#include "ZOL/Framework/GenericLogger/LoggerImpl.h"
#include "ZOL/Framework/StaticObjects.h"

namespace ZOL::Framework::GenericLogger {

namespace {

// File and lines that a refused installation reports. They are fixed, not those of this file.
constexpr const char* throwFile = "src\\ZOL\\Framework\\GenericLogger\\Logger";
constexpr int nullBackendLine = 256;
constexpr int installedTwiceLine = 263;

} // namespace

void Logger::installBackend(LoggerBackend* backend) {
    const boost::recursive_mutex::scoped_lock lock(loggerMutex);

    if (backend == nullptr) {
        throw LoggerBackendLoadError("Cannot install a NULL backend!", throwFile, nullBackendLine);
    }
    if (std::find(installedBackends.begin(), installedBackends.end(), backend) !=
        installedBackends.end()) {
        throw LoggerBackendLoadError("Cannot install a backend twice!", throwFile,
                                     installedTwiceLine);
    }
    installedBackends.push_back(backend);
    refreshAllLoggers();
}

void Logger::uninstallBackend(LoggerBackend* backend) {
    const boost::recursive_mutex::scoped_lock lock(loggerMutex);

    const auto installed = std::find(installedBackends.begin(), installedBackends.end(), backend);
    if (installed != installedBackends.end()) {
        installedBackends.erase(installed);
    }
}

void Logger::refreshAllLoggers() {
    const boost::recursive_mutex::scoped_lock lock(loggerMutex);

    for (const auto& [name, logger] : loggers) {
        logger->impl_->connect(installedBackends);
    }
}

} // namespace ZOL::Framework::GenericLogger
