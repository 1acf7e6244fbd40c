#include "ZOL/Framework/GenericLogger/LoggerBackendLoadError.h"

#include "steps/Steps.h"

namespace backendcheck {

using ZOL::Framework::GenericLogger::Logger;
using ZOL::Framework::GenericLogger::LoggerBackendLoadError;

namespace {

// The calls that one message may cause before it is taken for endless.
constexpr int few = 300;

/// One that is not is installed again.
bool isInstalled(CheckSession& session) {
    try {
        Logger::installBackend(session.backend);
        return false;
    } catch (const LoggerBackendLoadError&) {
        return true;
    } catch (...) {
        return false;
    }
}

} // namespace

void tryReentrancy(CheckSession& session) {
    // The first message of all, so that what never ends is known for what it is.
    const int before = session.probe().messages();
    const bool logged = session.attempt("re-entrancy", "log with a first message", [&] {
        session.probe().allow(few);
        session.logger()->info("the first message");
    });
    const int made = session.probe().messages() - before - 1;
    if (!session.isWanted("re-entrancy")) {
        return;
    }

    auto* const second = new ProbeBackend([] {});
    constexpr int plenty = 1000000;
    second->allow(plenty);
    // The checker's own channel comes before the plug-in's, and does what any channel may do.
    const bool nested =
        session.attempt("re-entrancy", "log while another back end logs to the same logger",
                        [&] {
                            session.underLock(
                                [&] { session.logger(".lock")->info("from within log"); });
                        }) &&
        session.attempt(
            "re-entrancy", "createChannel while another back end gets a logger in log",
            [&] { session.underLock([&] { session.logger(".within")->info("a new logger"); }); }) &&
        session.attempt("re-entrancy", "createChannel while another back end installs one in log",
                        [&] { session.underLock([&] { Logger::installBackend(second); }); });
    if (nested && !isInstalled(session)) {
        session.report(
            "re-entrancy", Result::Wrong,
            "after a few messages it is not installed any more: it uninstalls itself, and "
            "the host does not know");
    } else if (!logged || !nested) {
        session.report("re-entrancy", Result::Note, "it throws: see exceptions");
    } else if (made > 0) {
        session.report(
            "re-entrancy", Result::Ok,
            "it gets on with others that log within log; it logs itself: for one message, " +
                std::to_string(made) + " more");
    } else {
        session.report("re-entrancy", Result::Ok, "it gets on with others that log within log");
    }
}

} // namespace backendcheck
