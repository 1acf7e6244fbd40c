#pragma once

#include <functional>

namespace support {

/// Runs the body of the running test in a process of its own, so that it finds the framework just
/// loaded, also where many tests run in one process. The body must be the test's whole work: the
/// new process runs the test from its beginning up to here. Fails unless that process ran exactly
/// this one test to its end.
void inFreshProcess(const std::function<void()>& body);

/// Whether this is such a process.
bool isFreshProcess();

/// The exit code of such a process that ran one test, which passed. Not 0, which a process also
/// returns that ended early or ran another number of tests.
constexpr int passedInFreshProcess = 77;

} // namespace support
