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

LoggerBackend* install(const char* name) {
    const std::string failure = std::string("cannot install the back end '") + name + "' from " +
                                DLLHolder::dllFileName(name, "") + ": ";
    LoggerBackend* backend = nullptr;
    try {
        backend = Logger::installBackend(name);
    } catch (const std::exception& exception) {
        throw std::runtime_error(failure + exception.what());
    }
    if (backend == nullptr) {
        throw std::runtime_error(failure + "its library offers none");
    }
    return backend;
}

} // namespace

InstalledBackend::InstalledBackend(const char* name) : backend_(install(name)) {}

InstalledBackend::~InstalledBackend() {
    Logger::uninstallBackend(backend_);
}

} // namespace Demo
