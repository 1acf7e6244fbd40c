#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <boost/thread/mutex.hpp>
#include <boost/thread/recursive_mutex.hpp>

// Not a forward declaration of LoggerBackend: one without the export mark would hide the class's
// debug information.
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

// The process-wide state that is constructed when the module loads. StaticObjects.cpp defines it,
// in that order. Names are compared byte by byte.

namespace ZOL::Framework {

extern std::uint32_t randomCounter_; // completed randomNumber calls; wraps, and is never reset
extern boost::mutex randomMutex_;

namespace Counting {

class Counter;

using CounterTable = std::map<std::string, Counter*>;
extern CounterTable counters_; // owns the counters; no lock, callers synchronise

} // namespace Counting

namespace CrisisLogging {

extern boost::mutex instanceMutex_; // guards the creation of the crisis logger

} // namespace CrisisLogging

namespace GenericLogger {

class Logger;

using LoggerTable = std::map<std::string, Logger*, std::less<>>;
extern LoggerTable loggers;                           // owns its keys, not the loggers
extern boost::recursive_mutex loggerMutex;            // held during every logging operation
extern std::vector<LoggerBackend*> installedBackends; // in installation order; owns none of them

} // namespace GenericLogger

namespace Management {

class ObjectRegistry;
extern ObjectRegistry objectRegistry;

} // namespace Management

} // namespace ZOL::Framework
