// A back end library that has nothing to offer.

#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    return nullptr;
}
