#include "Trial.h"

#include <algorithm>
#include <utility>

#include "Child.h"
#include "Memory.h"
#include "Thrown.h"

namespace backendcheck {

using ZOL::Framework::GenericLogger::Logger;

namespace {

// The calls that one step may cause in all, with room for a plug-in that logs a little itself.
constexpr int enough = 20000;

} // namespace

Trial::Trial(Options options, Journal& journal)
    : handlesBefore(openHandles()),
      threadsBefore(runningThreads()),
      options_(std::move(options)),
      journal_(journal),
      witness_(new Witness([this] {
          journal_.find({"re-entrancy", Result::Wrong,
                         "it logs, or gets a logger, in answer to its own messages, which never "
                         "ends"});
          journal_.quit();
          endNow(0);
      })) {
    witness_->allow(enough);
}

bool Trial::isWanted(const std::string& check) const {
    return std::find(options_.skipped.begin(), options_.skipped.end(), check) ==
           options_.skipped.end();
}

void Trial::find(const std::string& check, Result result, const std::string& text) {
    journal_.find({check, result, text});
}

bool Trial::attempt(const std::string& check, const std::string& doing,
                    const std::function<void()>& call) {
    witness_->allow(enough);
    at(check, doing);
    try {
        call();
        return true;
    } catch (...) {
        exceptionIn(doing);
        return false;
    }
}

void Trial::exceptionIn(const std::string& doing) {
    const std::string what = thrownException();
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!hasThrown_) {
        hasThrown_ = true;
        find("exceptions", Result::Wrong,
             what + " came out of " + doing +
                 "\nthe contract lets it, and it hits whoever logs or gets a logger: catch it in "
                 "the back end");
    }
}

void Trial::underLock(const std::function<void()>& call) {
    witness_->runInNextMessage(call);
    logger(".lock")->info("with the lock");
}

Logger* Trial::logger(const std::string& end) const {
    return Logger::getLogger(loggerName(end).c_str());
}

} // namespace backendcheck
