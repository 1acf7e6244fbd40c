#pragma once

#include <boost/thread/recursive_mutex.hpp>

namespace ZOL::Platform {

/// Makes a fork wait until the calling thread has the mutex, and gives it back in both processes.
/// Without this, a child whose parent's other threads were just using the mutex could never acquire
/// it. Has no effect on Windows, which has no fork. Called once, while the module loads.
///
/// @param mutex lives until the module unloads.
void keepUsableAfterFork(boost::recursive_mutex& mutex);

} // namespace ZOL::Platform
