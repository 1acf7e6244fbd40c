#include "ZOL/Framework/StaticObjects.h"

#include "ZOL/Framework/Counting/Counter.h"
#include "ZOL/Framework/Counting/CounterReaper.h"
#include "ZOL/Framework/Management/ObjectRegistry.h"
#include "ZOL/Framework/RandomSeeder.h"
#include "ZOL/Platform/Fork.h"

// All static objects of the module, in the order of their construction. They are destroyed in
// reverse order when the module unloads: the object registry before the logging state, and the
// counters before their table. Loggers, registered objects and the crisis logger are never
// destroyed.

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

static const struct ForkGuard {
    ForkGuard() { Platform::keepUsableAfterFork(loggerMutex); }
} forkGuard;

std::vector<LoggerBackend*> installedBackends;

} // namespace GenericLogger

std::uint32_t randomCounter_ = 0;

static RandomSeeder randomSeeder;

boost::mutex randomMutex_;

namespace Management {

ObjectRegistry objectRegistry;

} // namespace Management

} // namespace ZOL::Framework
