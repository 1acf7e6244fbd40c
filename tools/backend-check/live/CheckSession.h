#pragma once

#include <functional>
#include <mutex>
#include <string>

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

#include "Finding.h"
#include "Options.h"
#include "live/CheckRecord.h"
#include "live/ProbeBackend.h"

namespace backendcheck {

/// One plug-in being tried in this process, and what the steps have in common.
class CheckSession {
public:
    CheckSession(Options options, CheckRecord& record);

    const Options& options() const { return options_; }
    ProbeBackend& probe() { return *probe_; }

    /// False if that check was made in an earlier process.
    bool isWanted(const std::string& check) const;

    void beginStep(const std::string& check, const std::string& doing) {
        record_.beginStep(check, doing);
    }
    void report(const std::string& check, Result result, const std::string& text);
    void done() { record_.done(); }
    bool isDone() const { return record_.isDone(); }

    /// Runs what calls the plug-in. False if that threw, which is then told under "exceptions".
    bool attempt(const std::string& check, const std::string& doing,
                 const std::function<void()>& call);

    /// Tells of the exception that is being handled.
    void exceptionIn(const std::string& doing);
    bool hasThrown() const { return hasThrown_; }

    /// With the logging lock held, as the framework calls a plug-in.
    void underLock(const std::function<void()>& call);

    /// The name of one of the loggers that are tried.
    std::string loggerName(const std::string& end = "") const { return options_.logger + end; }
    ZOL::Framework::GenericLogger::Logger* logger(const std::string& end = "") const;

    ZOL::Framework::GenericLogger::LoggerBackend* backend = nullptr; // what createBackend returned
    bool isSlow = false;
    const std::size_t handlesBefore; // it was loaded
    const std::size_t threadsBefore;

private:
    Options options_; // needed when main has returned
    CheckRecord& record_;
    ProbeBackend* probe_;
    bool hasThrown_ = false;
    std::mutex mutex_;
};

} // namespace backendcheck
