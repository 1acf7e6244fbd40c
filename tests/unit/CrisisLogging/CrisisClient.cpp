// Another process that uses the crisis log as its arguments say. Exits with 0 if it got the log,
// with 3 if it was refused.

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "ZOL/Framework/CrisisLogging/CrisisLogger.h"
#include "ZOL/Framework/Exceptions/FrameworkException.h"

using ZOL::Framework::CrisisLogging::CrisisLogger;
using ZOL::Framework::Exceptions::FrameworkException;

namespace {

constexpr int refused = 3;
constexpr int misused = 4;

void create(const std::string& file) {
    const std::ofstream created(file);
}

void waitFor(const std::string& file) {
    while (!std::filesystem::exists(file)) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

int log(const char* message) {
    CrisisLogger::instance().log(message);
    return 0;
}

/// Like a crash: no buffer is flushed.
int logAndCrash(const char* message) {
    CrisisLogger::instance().log(message);
    std::_Exit(0);
}

int hold(const std::string& ready, const std::string& end) {
    CrisisLogger::instance();
    create(ready);
    waitFor(end);
    return 0;
}

/// Runs without the crisis log.
int idle(const std::string& ready, const std::string& end) {
    create(ready);
    waitFor(end);
    return 0;
}

/// Tries when signalled, and keeps the log until the other one has tried as well.
int contend(const std::string& folder, const std::string& me, const std::string& other) {
    create(folder + "/" + me + ".ready");
    waitFor(folder + "/go");
    int outcome = 0;
    try {
        CrisisLogger::instance();
    } catch (const FrameworkException&) {
        outcome = refused;
    }
    create(folder + "/" + me + ".tried");
    waitFor(folder + "/" + other + ".tried");
    return outcome;
}

} // namespace

int main(int argc, char** argv) {
    const std::string what = argc > 2 ? argv[1] : "";
    try {
        if (what == "log") {
            return log(argv[2]);
        }
        if (what == "crash") {
            return logAndCrash(argv[2]);
        }
        if (what == "hold" && argc == 4) {
            return hold(argv[2], argv[3]);
        }
        if (what == "idle" && argc == 4) {
            return idle(argv[2], argv[3]);
        }
        if (what == "contend" && argc == 5) {
            return contend(argv[2], argv[3], argv[4]);
        }
    } catch (const FrameworkException&) {
        return refused;
    }
    return misused;
}
