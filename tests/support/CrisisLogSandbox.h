#pragma once

#include <functional>
#include <string>

namespace support {

/// During its lifetime the fixed path of the crisis log belongs to this test: on Linux in a private
/// mount namespace, on Windows by a lock and by moving an existing file away. There is no file at
/// first. Child processes share the path.
class CrisisLogSandbox {
public:
    CrisisLogSandbox();
    CrisisLogSandbox(const CrisisLogSandbox&) = delete;
    CrisisLogSandbox& operator=(const CrisisLogSandbox&) = delete;
    ~CrisisLogSandbox();

    static const char* const path;
    static const char* const lineEnd;

    /// An empty folder in which the processes of a test communicate.
    static std::string scratch();

    /// Whether another open of the file as the crisis logger does it, even for reading, would
    /// succeed now. A missing file is free.
    static bool isFree();
};

/// Runs the body of the running test in a new process with its own sandbox.
void withCrisisLog(const std::function<void()>& body);

} // namespace support

/// A test that starts without a crisis log, in a framework that was never asked for one. The
/// framework's crisis logger lives as long as the process, so each test has its own.
#define CRISIS_LOG_TEST(suite, name)                                                               \
    static void suite##name();                                                                     \
    TEST(suite, name) {                                                                            \
        support::withCrisisLog(suite##name);                                                       \
    }                                                                                              \
    static void suite##name()
