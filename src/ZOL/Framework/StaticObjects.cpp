#include "ZOL/Framework/StaticObjects.h"

#include "ZOL/Framework/Counting/Counter.h"
#include "ZOL/Framework/Counting/CounterReaper.h"
#include "ZOL/Framework/Management/ObjectRegistry.h"
#include "ZOL/Framework/RandomSeeder.h"

// Every static object of the module, top to bottom in load order. Unloading cleans up bottom to
// top: the registry forgets its names before the logging state goes, and the counters are deleted
// before their table. Loggers, registered objects and the crisis logger are left as they are.

namespace ZOL::Framework {

namespace Counting {

CounterTable counters_;

static CounterReaper counterReaper;

} // namespace Counting

namespace CrisisLogging {

boost::mutex instanceMutex_;

} // namespace CrisisLogging

namespace GenericLogger {

LoggerTable loggers;

boost::recursive_mutex loggerMutex;

std::vector<LoggerBackend*> installedBackends;

} // namespace GenericLogger

std::uint32_t randomCounter_ = 0;

static RandomSeeder randomSeeder;

boost::mutex randomMutex_;

namespace Management {

ObjectRegistry objectRegistry;

} // namespace Management

} // namespace ZOL::Framework
