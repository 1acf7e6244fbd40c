#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/StaticObjects.h"
#include "ZOL/Gadgets/DLL/DLLHolder.h"

namespace ZOL::Framework::GenericLogger {

LoggerBackend* Logger::loadBackend(const char* name) {
    const boost::recursive_mutex::scoped_lock lock(loggerMutex);

    // Never destroyed: the library of a back end stays loaded until the process ends.
    const auto* const holder = new Gadgets::DLL::DLLHolder(name, "");
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks)
    return holder->resolve<LoggerBackend*()>("createBackend")();
}

LoggerBackend* Logger::installBackend(const char* name) {
    LoggerBackend* const backend = loadBackend(name);
    if (backend != nullptr) {
        installBackend(backend);
    }
    return backend;
}

} // namespace ZOL::Framework::GenericLogger
