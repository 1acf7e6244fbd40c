#include "Delivery.h"

#include <boost/thread/recursive_mutex.hpp>

#include "../baseline/Baseline.h"

namespace benchmarks {

namespace {

constexpr int level = 30;

boost::recursive_mutex lock;
Sink& floorSink = sink();

} // namespace

void deliverUnderLock(const char* text) {
    const boost::recursive_mutex::scoped_lock locked(lock);
    floorSink.log(level, text);
}

} // namespace benchmarks
