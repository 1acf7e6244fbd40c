// Does the host's part as well.

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "Parts.h"

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    static LoggerBackend* const backend = [] {
        auto* const made = new BackendWith<Channel>;
        ZOL::Framework::GenericLogger::Logger::installBackend(made);
        return made;
    }();
    return backend;
}
