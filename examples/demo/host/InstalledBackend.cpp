#include "host/InstalledBackend.h"

#include <exception>
#include <stdexcept>
#include <string>

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Gadgets/DLL/DLLHolder.h"

using namespace ZOL::Framework::GenericLogger;
using ZOL::Gadgets::DLL::DLLHolder;

namespace Demo {

namespace {

LoggerBackend& load(const char* name) {
    const std::string failure = std::string("cannot load the back end '") + name + "' from " +
                                DLLHolder::dllFileName(name, "") + ": ";
    LoggerBackend* backend = nullptr;
    try {
        backend = Logger::loadBackend(name);
    } catch (const std::exception& exception) {
        throw std::runtime_error(failure + exception.what());
    }
    if (backend == nullptr) {
        throw std::runtime_error(failure + "its library offers none");
    }
    return *backend;
}

} // namespace

InstalledBackend::InstalledBackend(const char* name) : observed_(load(name)) {
    try {
        Logger::installBackend(&observed_);
    } catch (...) {
        Logger::uninstallBackend(&observed_); // a plug-in that throws is on the list all the same
        throw;
    }
}

InstalledBackend::~InstalledBackend() {
    Logger::uninstallBackend(&observed_);
}

} // namespace Demo
