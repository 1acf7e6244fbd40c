#include "live/CheckSession.h"

#include <algorithm>
#include <utility>

#include "live/ChildProcess.h"
#include "live/CurrentException.h"
#include "live/ThisProcess.h"

namespace backendcheck {

using ZOL::Framework::GenericLogger::Logger;

namespace {

// The calls that one step may cause in all, with room for a plug-in that logs a little itself.
constexpr int enough = 20000;

} // namespace

CheckSession::CheckSession(Options options, CheckRecord& record)
    : handlesBefore(openHandles()),
      threadsBefore(runningThreads()),
      options_(std::move(options)),
      record_(record),
      probe_(new ProbeBackend([this] {
          record_.report({"re-entrancy", Result::Wrong,
                          "it logs, or gets a logger, in answer to its own messages, which never "
                          "ends"});
          record_.quit();
          endNow(0);
      })) {
    probe_->allow(enough);
}

bool CheckSession::isWanted(const std::string& check) const {
    return std::find(options_.skipped.begin(), options_.skipped.end(), check) ==
           options_.skipped.end();
}

void CheckSession::report(const std::string& check, Result result, const std::string& text) {
    record_.report({check, result, text});
}

bool CheckSession::attempt(const std::string& check, const std::string& doing,
                           const std::function<void()>& call) {
    probe_->allow(enough);
    beginStep(check, doing);
    try {
        call();
        return true;
    } catch (...) {
        exceptionIn(doing);
        return false;
    }
}

void CheckSession::exceptionIn(const std::string& doing) {
    const std::string what = thrownException();
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!hasThrown_) {
        hasThrown_ = true;
        report("exceptions", Result::Wrong,
               what + " came out of " + doing +
                   "\nthe contract lets it, and it hits whoever logs or gets a logger: catch it in "
                   "the back end");
    }
}

void CheckSession::underLock(const std::function<void()>& call) {
    probe_->runInNextMessage(call);
    logger(".lock")->info("with the lock");
}

Logger* CheckSession::logger(const std::string& end) const {
    return Logger::getLogger(loggerName(end).c_str());
}

} // namespace backendcheck
