#include "ZOL/Framework/Export.h"
#include "ZOL/Framework/GenericLogger/Logger.h"

extern "C" ZOL_BACKEND_EXPORT void logFromModule() {
    ZOL::Framework::GenericLogger::Logger::getLogger("consumer")->info("from the module");
}
