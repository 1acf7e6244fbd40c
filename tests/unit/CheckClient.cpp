// A program whose ZOL_CHECK fails or holds as its arguments say: CheckClient HOW FOLDER. Standard
// error is the file "error" in the folder,
// messages are in the file "log". The exit code is checkAborted if std::abort was called, and the
// number of evaluated texts if every check held.

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "CheckClient.h"

#include "ZOL/Framework/Check.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

int evaluated = 0;
int pieces = -3;

int evaluate() {
    return ++evaluated;
}

class FileBackend final : public LoggerBackend, public LoggingChannel {
public:
    explicit FileBackend(const std::string& file) : file_(file) {}

    LoggingChannel* createChannel(const char* name) override {
        logger_ = name;
        return this;
    }
    void release() override {}
    void log(LoggingLevel level, const char* text) override {
        file_ << level << ' ' << logger_ << ' ' << text << std::endl;
        if (onLog) {
            onLog();
        }
    }

    std::function<void()> onLog;

private:
    std::ofstream file_;
    std::string logger_;
};

FileBackend* backend = nullptr;

void fail() {
    ZOL_CHECK(pieces >= 0) << pieces << " left";
}

void failAsInTheDocument() {
#include "statements_check.inc" // NOLINT(bugprone-suspicious-include)
}

int failAtTheEndOfAFunction() {
    ZOL_CHECK(false) << "needs no return";
}

void failWithoutText() {
    ZOL_CHECK(std::is_same_v<int, long>);
}

void hold() {
    const auto owner = std::make_unique<int>(1);
    ZOL_CHECK(owner) << evaluate();
    ZOL_CHECK(std::is_same_v<int, int>) << evaluate();
    ZOL_CHECK(++pieces < 0);
    // NOLINTBEGIN(readability-braces-around-statements)
    if (pieces == -2)
        ZOL_CHECK(pieces < 0) << evaluate();
    else
        ZOL_CHECK(pieces > 0) << evaluate();
    // NOLINTEND(readability-braces-around-statements)
}

void failWhileAChannelThrows() {
    backend->onLog = [] {
        throw std::runtime_error("channel");
    };
    fail();
}

void failInTheChannelToo() {
    backend->onLog = fail;
    fail();
}

void failWhileTheTextThrows() {
    ZOL_CHECK(pieces >= 0) << "half a text" << [] {
        throw std::runtime_error("rest");
        return 0;
    }();
}

void failDuringAnException() {
    struct Guard {
        ~Guard() { fail(); }
    };
    try {
        const Guard guard;
        throw std::runtime_error("first");
    } catch (const std::runtime_error&) {
        evaluate();
    }
}

void failWhileAnotherThreadLogsWithoutEnd() {
    std::atomic<bool> isLogging{false};
    backend->onLog = [&] {
        isLogging = true;
        for (;;) {
            std::this_thread::sleep_for(std::chrono::hours(1));
        }
    };
    std::thread([] { Logger::getLogger("busy")->info("never ends"); }).detach();
    while (!isLogging) {
        std::this_thread::yield();
    }
    fail();
}

void failOnEightThreads() {
    std::vector<std::thread> threads(8);
    for (std::thread& thread : threads) {
        thread = std::thread(fail);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

extern "C" void onAbort(int) {
    std::_Exit(checkAborted);
}

const std::map<std::string, void (*)()> ways = {
    {"fail", fail},
    {"without-handler", fail},
    {"document", failAsInTheDocument},
    {"end-of-function",
     [] {
         failAtTheEndOfAFunction();
     }},
    {"without-text", failWithoutText},
    {"hold", hold},
    {"channel-throws", failWhileAChannelThrows},
    {"nested", failInTheChannelToo},
    {"text-throws", failWhileTheTextThrows},
    {"unwinding", failDuringAnException},
    {"uncaught", failWhileTheTextThrows},
    {"hang", failWhileAnotherThreadLogsWithoutEnd},
    {"threads", failOnEightThreads},
};

} // namespace

int main(int argc, char** argv) {
    if (argc != 3 || ways.count(argv[1]) == 0) {
        return checkMisused;
    }
    const std::string folder = argv[2];
    if (std::freopen((folder + "/error").c_str(), "w", stderr) == nullptr) {
        return checkMisused;
    }
    if (argv[1] != std::string("without-handler")) {
        std::signal(SIGABRT, onAbort);
    }
    Logger::installBackend(backend = new FileBackend(folder + "/log"));
    Logger::getLogger("zol.check"); // its channel is the last one
    if (argv[1] == std::string("uncaught")) {
        failWhileTheTextThrows();
    }
    try {
        ways.at(argv[1])();
    } catch (...) {
        return checkThrew;
    }
    return evaluated;
}
