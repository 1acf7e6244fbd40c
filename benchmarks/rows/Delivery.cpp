#include "Delivery.h"

#include <boost/thread/recursive_mutex.hpp>

#include "ZOL/Framework/Management/MemoryManager.h"

#include "../baseline/Baseline.h"

using ZOL::Framework::GenericLogger::Logger;
namespace MemoryManager = ZOL::Framework::Management::MemoryManager;

namespace benchmarks {

namespace {

boost::recursive_mutex lock;
Sink& floorSink = sink();

} // namespace

void deliverUnderLock(const char* text) {
    const boost::recursive_mutex::scoped_lock locked(lock);
    floorSink.log(ZOL::Framework::GenericLogger::LOG_LEVEL_INFO, text);
}

ByteCounter& floorCounter() {
    return floorSink.counter();
}

Logger* productLogger() {
    static Logger* const logger = [] {
        Logger::installBackend("BenchmarkDiscard");
        return Logger::getLogger("benchmarks");
    }();
    return logger;
}

ByteCounter& productCounter() {
    productLogger();
    return *static_cast<ByteCounter*>(MemoryManager::findObject(discardCounterName));
}

} // namespace benchmarks
