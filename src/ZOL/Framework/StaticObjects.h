#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <boost/thread/mutex.hpp>
#include <boost/thread/recursive_mutex.hpp>

// Not a mere declaration of LoggerBackend: one that is not marked for export hides what a debug
// build writes down about the class.
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

// The process-wide state that comes up while the module loads; StaticObjects.cpp defines it in
// load order. Name tables compare byte by byte, and may be searched without a copy of the key.

namespace ZOL::Framework {

extern std::uint32_t randomCounter_; // completed randomNumber calls; wraps, and is never reset
extern boost::mutex randomMutex_;

namespace Counting {

class Counter;

using CounterTable = std::map<std::string, Counter*>;
extern CounterTable counters_; // owns the counters; unlocked, as its callers take turns themselves

} // namespace Counting

namespace CrisisLogging {

extern boost::mutex instanceMutex_; // guards the creation of the crisis logger

} // namespace CrisisLogging

namespace GenericLogger {

class Logger;

using LoggerTable = std::map<std::string, Logger*, std::less<>>;
extern LoggerTable loggers;                // owns its keys, not the loggers
extern boost::recursive_mutex loggerMutex; // held for the whole of every logging operation
extern std::vector<LoggerBackend*> installedBackends; // in installation order; owns none of them

} // namespace GenericLogger

namespace Management {

class ObjectRegistry;
extern ObjectRegistry objectRegistry;

} // namespace Management

} // namespace ZOL::Framework
