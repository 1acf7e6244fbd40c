#pragma once

#include <functional>

namespace support {

/// Runs the body of the running test in a process of its own, so that it finds the framework just
/// loaded, also where many tests run in one process. The body must be the test's whole work: the
/// new process runs the test from its beginning up to here.
void inFreshProcess(const std::function<void()>& body);

/// Whether this is such a process.
bool isFreshProcess();

} // namespace support
