#include "FloorLine.h"

#include <boost/thread/recursive_mutex.hpp>

#include "../far/TextTaker.h"

namespace benchmarks {

namespace {

constexpr int level = 30;

boost::recursive_mutex lock;
TextTaker& taker = textTaker();

} // namespace

void deliverUnderLock(const char* text) {
    const boost::recursive_mutex::scoped_lock locked(lock);
    taker.take(level, text);
}

FarSide& floorFarSide() {
    return taker.farSide();
}

} // namespace benchmarks
