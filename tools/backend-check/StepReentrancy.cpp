#include "ZOL/Framework/GenericLogger/LoggerBackendLoadError.h"

#include "Steps.h"

namespace backendcheck {

using ZOL::Framework::GenericLogger::Logger;
using ZOL::Framework::GenericLogger::LoggerBackendLoadError;

namespace {

// The calls that one message may cause before it is taken for endless.
constexpr int few = 300;

/// One that is not is installed again.
bool isInstalled(Trial& trial) {
    try {
        Logger::installBackend(trial.backend);
        return false;
    } catch (const LoggerBackendLoadError&) {
        return true;
    } catch (...) {
        return false;
    }
}

} // namespace

void tryReentrancy(Trial& trial) {
    // The first message of all, so that what never ends is known for what it is.
    const int before = trial.witness().messages();
    const bool logged = trial.attempt("re-entrancy", "log with a first message", [&] {
        trial.witness().allow(few);
        trial.logger()->info("the first message");
    });
    const int made = trial.witness().messages() - before - 1;
    if (!trial.isWanted("re-entrancy")) {
        return;
    }

    auto* const second = new Witness([] {});
    constexpr int plenty = 1000000;
    second->allow(plenty);
    // The checker's own channel comes before the plug-in's, and does what any channel may do.
    const bool nested =
        trial.attempt(
            "re-entrancy", "log while another back end logs to the same logger",
            [&] { trial.underLock([&] { trial.logger(".lock")->info("from within log"); }); }) &&
        trial.attempt(
            "re-entrancy", "createChannel while another back end gets a logger in log",
            [&] { trial.underLock([&] { trial.logger(".within")->info("a new logger"); }); }) &&
        trial.attempt("re-entrancy", "createChannel while another back end installs one in log",
                      [&] { trial.underLock([&] { Logger::installBackend(second); }); });
    if (nested && !isInstalled(trial)) {
        trial.find("re-entrancy", Result::Wrong,
                   "after a few messages it is not installed any more: it uninstalls itself, and "
                   "the host does not know");
    } else if (!logged || !nested) {
        trial.find("re-entrancy", Result::Note, "it throws: see exceptions");
    } else if (made > 0) {
        trial.find("re-entrancy", Result::Ok,
                   "it gets on with others that log within log; it logs itself: for one message, " +
                       std::to_string(made) + " more");
    } else {
        trial.find("re-entrancy", Result::Ok, "it gets on with others that log within log");
    }
}

} // namespace backendcheck
