#include <cstdlib>

#include <boost/thread/mutex.hpp>

#include "../Baseline.h"

namespace benchmarks {

namespace {

boost::mutex lock;

} // namespace

unsigned int lockedRandom() {
    const boost::mutex::scoped_lock locked(lock);
    return static_cast<unsigned int>(std::rand());
}

} // namespace benchmarks
