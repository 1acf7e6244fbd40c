#include <cstdint>

#include <boost/thread/mutex.hpp>

#include "../Baseline.h"

namespace benchmarks {

namespace {

boost::mutex lock;
thread_local std::uint32_t state = 1;

} // namespace

unsigned int lockedRandom() {
    const boost::mutex::scoped_lock locked(lock);
    state = state * 214013U + 2531011U;
    return (state >> 16) & 0x7FFFU;
}

} // namespace benchmarks
