// Checks "re-entrancy" and "threads": calls within calls, and from many threads.

#include <chrono>
#include <thread>
#include <vector>

#include "ZOL/Framework/GenericLogger/LoggerBackendLoadError.h"

#include "Text.h"
#include "live/CrashHandler.h"
#include "steps/Limits.h"
#include "steps/Steps.h"

namespace backendcheck {

using ZOL::Framework::GenericLogger::Logger;
using ZOL::Framework::GenericLogger::LoggerBackendLoadError;

namespace {

using Clock = std::chrono::steady_clock;

// The calls that one message may cause before they count as endless.
constexpr int maxCallsOfOneMessage = 300;
constexpr int threadCount = 8;
constexpr int messagesEach = 50;

/// Installs the back end if it is not.
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

/// Stops at the end time: a slow back end need not be called that often.
void logFromThread(CheckSession& session, int thread, Clock::time_point end) {
    const std::string own = ".thread" + std::to_string(thread);
    try {
        for (int i = 0; i < messagesEach && Clock::now() < end; ++i) {
            session.logger()->error() << "to a logger that all share: " << i;
            session.logger(own)->info() << "to a logger of its own: " << i;
            constexpr int interval = 10;
            if (i % interval == 0 && !session.isSlow) {
                session.logger(own + "." + std::to_string(i))->debug("to a new logger");
            }
        }
    } catch (...) {
        session.reportException(describeCurrentException(),
                                "log or createChannel, called from one of eight threads");
    }
}

} // namespace

void tryReentrancy(CheckSession& session) {
    session.beginCheck("re-entrancy");
    // The first message of all, so that endless logging is not found by another check.
    const int before = session.probe().messages();
    Clock::duration time{};
    session.attempt("log with a first message", [&] {
        session.probe().allow(maxCallsOfOneMessage);
        const Clock::time_point start = Clock::now();
        session.logger()->info("the first message");
        time = Clock::now() - start;
    });
    if (time > maxOfFirstMessage) {
        session.slowness = "\nthe first message takes " + inMilliseconds(time);
    }
    const int made = session.probe().messages() - before - 1;
    if (!session.isWanted("re-entrancy")) {
        return;
    }

    auto* const second = new ProbeBackend([] {});
    constexpr int unlimited = 1000000;
    second->allow(unlimited);
    // The tool's own channel is called before the plug-in's, and does what any channel may do.
    const bool nested =
        session.attemptUnderLock("log while another back end logs to the same logger",
                                 [&] { session.logger(".lock")->info("from within log"); }) &&
        session.attemptUnderLock("createChannel while another back end gets a logger in log",
                                 [&] { session.logger(".within")->info("a new logger"); }) &&
        session.attemptUnderLock("createChannel while another back end installs one in log",
                                 [&] { Logger::installBackend(second); });
    if (nested && !isInstalled(session)) {
        session.report(Result::Wrong,
                       "after a few messages it is not installed any more: it uninstalls itself, "
                       "and the host does not know");
        return;
    }
    std::string text = "other back ends can log and install within log";
    if (made > 0) {
        text += "; it logs itself: for one message, " + std::to_string(made) + " more";
    }
    session.reportOk(text);
}

void tryThreads(CheckSession& session) {
    session.attempt("log and createChannel, called from eight threads", [&] {
        const Clock::time_point end = Clock::now() + std::chrono::seconds(2);
        std::vector<std::thread> threads;
        threads.reserve(threadCount);
        for (int i = 0; i < threadCount; ++i) {
            threads.emplace_back([&session, i, end] { logFromThread(session, i, end); });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    });
    session.reportOk("it takes messages from eight threads at once");
}

} // namespace backendcheck
