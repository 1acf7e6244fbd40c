#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "ChildProcess.h"
#include "CrisisLogSandbox.h"

/// Exit codes of a client that got the crisis log, and of one that was refused.
constexpr int gotTheLog = 0;
constexpr int wasRefused = 3;

inline std::string clientProgram() {
    return support::ChildProcess::program("CrisisClient");
}

/// Whether it got the log.
inline int logInAnotherProcess(const std::string& message) {
    return support::ChildProcess({clientProgram(), "log", message}).wait();
}

inline void waitForFile(const std::string& file) {
    while (!std::filesystem::exists(file)) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

/// A process that runs during the object's lifetime, with the crisis log ("hold") or without
/// ("idle").
class StayingClient {
public:
    explicit StayingClient(const std::string& what)
        : end_(support::CrisisLogSandbox::scratch() + "/" + what + ".end"),
          process_({clientProgram(), what, ready(what), end_}) {
        waitForFile(ready(what));
    }
    StayingClient(const StayingClient&) = delete;
    StayingClient& operator=(const StayingClient&) = delete;
    ~StayingClient() { end(); }

    /// Lets the process end. Returns its exit code.
    int end() {
        std::filesystem::create_directory(end_);
        return process_.wait();
    }

private:
    static std::string ready(const std::string& what) {
        return support::CrisisLogSandbox::scratch() + "/" + what + ".ready";
    }

    std::string end_;
    support::ChildProcess process_;
};
