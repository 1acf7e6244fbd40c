#pragma once

#include <functional>
#include <mutex>
#include <string>

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

#include "Finding.h"
#include "Journal.h"
#include "Options.h"
#include "Witness.h"

namespace backendcheck {

/// One plug-in being tried in this process, and what the steps have in common.
class Trial {
public:
    Trial(Options options, Journal& journal);

    const Options& options() const { return options_; }
    Witness& witness() { return *witness_; }

    /// False if that check was made in an earlier process.
    bool isWanted(const std::string& check) const;

    void at(const std::string& check, const std::string& doing) { journal_.at(check, doing); }
    void find(const std::string& check, Result result, const std::string& text);
    void done() { journal_.done(); }
    bool isDone() const { return journal_.isDone(); }

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
    Journal& journal_;
    Witness* witness_;
    bool hasThrown_ = false;
    std::mutex mutex_;
};

} // namespace backendcheck
