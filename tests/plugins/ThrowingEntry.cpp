// An entry point that throws.

#include <stdexcept>

#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    throw std::logic_error("no back end today");
}
