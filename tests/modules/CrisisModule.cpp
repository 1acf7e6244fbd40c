// A module that uses the crisis log; built twice, as two that know nothing of each other.

#include <cstring>

#include "ZOL/Framework/CrisisLogging/CrisisLogger.h"
#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Framework/Export.h"

using ZOL::Framework::CrisisLogging::CrisisLogger;
using ZOL::Framework::Exceptions::FrameworkException;

extern "C" ZOL_BACKEND_EXPORT CrisisLogger* crisisLogger() {
    return &CrisisLogger::instance();
}

extern "C" ZOL_BACKEND_EXPORT void logCrisis(const char* message) {
    CrisisLogger::instance().log(message);
}

/// Asks for the crisis log. True if it is there; otherwise why has the text of the refusal.
extern "C" ZOL_BACKEND_EXPORT bool askForCrisisLog(char* why, int size) {
    try {
        CrisisLogger::instance();
        return true;
    } catch (const FrameworkException& exception) {
        std::strncpy(why, exception.message(), static_cast<std::size_t>(size) - 1);
        return false;
    }
}
