// A library with the right name and without createBackend: the entry point is mangled here.

#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend();

ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    return nullptr;
}
