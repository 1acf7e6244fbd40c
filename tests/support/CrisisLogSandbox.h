#pragma once

#include <functional>
#include <string>

namespace support {

/// The fixed place of the crisis log, made this test's own for the life of the object: natively in
/// a mount namespace that the machine does not see, on Windows by taking turns and putting an
/// existing file aside. The place starts empty. Started processes share it.
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

    /// Whether somebody else, be it one who only reads, would get the file now if it asked the way
    /// the crisis logger does. A missing file is free.
    static bool isFree();
};

/// Runs the body of the running test in a process of its own, in a place of its own.
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
