#include "live/CheckSession.h"

#include <algorithm>
#include <utility>

#include "live/CrashHandler.h"
#include "live/ThisProcess.h"

namespace backendcheck {

using ZOL::Framework::GenericLogger::Logger;

namespace {

// The calls that one step may cause in all, with room for a plug-in that logs a little itself.
constexpr int maxCalls = 20000;

} // namespace

CheckSession::CheckSession(Options options, CheckRecord& record)
    : handlesBefore(openHandles()),
      threadsBefore(runningThreads()),
      options_(std::move(options)),
      record_(record),
      probe_(new ProbeBackend([this] {
          report("re-entrancy", Result::Wrong,
                 "it logs, or gets a logger, for each of its own messages, which never ends");
          record_.quit();
          endNow(exitGood);
      })) {
    probe_->allow(maxCalls);
}

bool CheckSession::isWanted(const std::string& check) const {
    return std::find(options_.skipped.begin(), options_.skipped.end(), check) ==
           options_.skipped.end();
}

void CheckSession::reportOk(const std::string& text) {
    report(threw_ ? Result::Note : Result::Ok, threw_ ? "it throws: see exceptions" : text);
}

std::string CheckSession::exceptionFrom(const std::string& action,
                                        const std::function<void()>& call) {
    beginStep(action);
    try {
        call();
        return {};
    } catch (...) {
        return describeCurrentException();
    }
}

bool CheckSession::attempt(const std::string& action, const std::function<void()>& call) {
    probe_->allow(maxCalls);
    const std::string exception = exceptionFrom(action, call);
    if (exception.empty()) {
        return true;
    }
    reportException(exception, action);
    threw_ = true;
    return false;
}

bool CheckSession::attemptUnderLock(const std::string& action, const std::function<void()>& call) {
    return attempt(action, [&] {
        probe_->runInNextMessage(call);
        logger(".lock")->info("with the lock");
    });
}

void CheckSession::reportException(const std::string& exception, const std::string& action) {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!std::exchange(hasThrown_, true)) {
        threw_ = true;
        report(
            "exceptions", Result::Wrong,
            exception + " came out of " + action +
                "\nthe framework passes it on to the statement that logs or gets a logger: catch "
                "it in the back end");
    }
}

Logger* CheckSession::logger(const std::string& end) const {
    return Logger::getLogger(loggerName(end).c_str());
}

} // namespace backendcheck
