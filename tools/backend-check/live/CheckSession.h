#pragma once

#include <functional>
#include <mutex>
#include <string>

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

#include "Options.h"
#include "live/CheckRecord.h"
#include "live/ProbeBackend.h"

namespace backendcheck {

/// The check of one plug-in in this process: what the steps have in common.
///
/// Any thread may call reportException, logger and loggerName, the main thread the rest.
class CheckSession {
public:
    CheckSession(Options options, CheckRecord& record);

    const Options& options() const { return options_; }
    ProbeBackend& probe() { return *probe_; }

    /// False if an earlier process has a result of that check.
    bool isWanted(const std::string& check) const;

    /// The next steps and reports belong to that check.
    void beginCheck(const std::string& check) {
        check_ = check;
        threw_ = false;
    }
    /// What the process does from now on.
    void beginStep(const std::string& action) { record_.beginStep(check_, action); }

    /// Returns false for a fault.
    bool report(const std::string& check, Result result, const std::string& text) {
        record_.report({check, result, text});
        return result != Result::Wrong;
    }
    bool report(Result result, const std::string& text) { return report(check_, result, text); }
    /// If the plug-in threw, a note refers to the check "exceptions" instead.
    void reportOk(const std::string& text);
    void done() { record_.done(); }
    bool isDone() const { return record_.isDone(); }

    /// Runs a call as a step. Returns the exception that it threw, or an empty text.
    std::string exceptionFrom(const std::string& action, const std::function<void()>& call);

    /// Runs a call of the plug-in as a step. Returns false if it threw, which is reported under
    /// "exceptions".
    bool attempt(const std::string& action, const std::function<void()>& call);

    /// The same, under the logging lock, as the framework calls a plug-in.
    bool attemptUnderLock(const std::string& action, const std::function<void()>& call);

    void reportException(const std::string& exception, const std::string& action);
    bool hasThrown() const { return hasThrown_; }
    bool hasThrownInCheck() const { return threw_; }

    /// The name of a logger that the plug-in should serve.
    std::string loggerName(const std::string& end = "") const { return options_.logger + end; }
    ZOL::Framework::GenericLogger::Logger* logger(const std::string& end = "") const;

    ZOL::Framework::GenericLogger::LoggerBackend* backend = nullptr; // what createBackend returned
    bool isSlow = false;
    std::string slowness;            // lines for the check "time"
    const std::size_t handlesBefore; // before it was loaded
    const std::size_t threadsBefore;

private:
    Options options_; // a copy: used after main has returned
    CheckRecord& record_;
    ProbeBackend* probe_;
    std::string check_;
    bool threw_ = false; // in this check
    bool hasThrown_ = false;
    std::mutex mutex_;
};

} // namespace backendcheck
