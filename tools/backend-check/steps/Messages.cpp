// Checks "texts", "levels", "uninstall" and "waiting": what is passed to log, and when.

#include <array>
#include <chrono>
#include <limits>
#include <string>
#include <thread>
#include <utility>

#include "live/GuardedText.h"
#include "steps/Steps.h"

namespace backendcheck {

using namespace ZOL::Framework::GenericLogger;

namespace {

/// Time for a thread of the plug-in to use a text that it has kept.
constexpr std::chrono::milliseconds lateReaders{150};

/// For a name that no logger has: the back end may destroy the channel that it created before.
LoggingChannel* createChannel(CheckSession& session) {
    return session.backend->createChannel(session.loggerName(".direct").c_str());
}

} // namespace

void tryTexts(CheckSession& session) {
    constexpr std::size_t mebibyte = std::size_t{1} << 20U;
    const std::array<std::pair<const char*, std::string>, 9> texts = {{
        {"an ordinary text", "stock is low"},
        {"an empty text", ""},
        {"a text of one character", "x"},
        {"a text of 300 characters", std::string(300, 'w')},
        {"a text of 70000 characters", std::string(70000, 'y')},
        {"a text of 1 MiB", std::string(mebibyte, 'z')},
        {"a text with line breaks", "first\nsecond\r\n\nlast\n"},
        {"a text with percent signs and braces", "%s%s%n%100000d {} {0} {:>9999999}"},
        {"a text that is no UTF-8", "\xFF\xFE\x80 \xC3 \xED\xA0\x80 \x01\x1B[31m"},
    }};
    for (const auto& [kind, content] : texts) {
        session.attemptUnderLock(std::string("log with ") + kind, [&, &passed = content] {
            LoggingChannel* const channel = createChannel(session);
            for (const std::string& each : {passed, std::string("another one")}) {
                const GuardedText text(each);
                if (channel != nullptr) {
                    channel->log(LOG_LEVEL_ERROR, text.get());
                }
            }
        });
    }
    session.beginStep("its use of texts after the call of log");
    std::this_thread::sleep_for(lateReaders);
    session.reportOk("it takes texts that are empty, of 1 MiB, of several lines or not UTF-8");
}

void tryLevels(CheckSession& session) {
    for (const int level : {0, 10, 20, 30, 40, 50, 60, 35, 1000, -1,
                            std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        session.attemptUnderLock("log with level " + std::to_string(level), [&] {
            if (LoggingChannel* const channel = createChannel(session)) {
                channel->log(static_cast<LoggingLevel>(level), std::string("of any level").c_str());
            }
        });
    }
    session.reportOk("it takes the named levels, level 0 and numbers without a name");
}

void tryUninstallation(CheckSession& session) {
    const bool uninstalled =
        session.attempt("log after uninstallBackend, with another back end installed", [&] {
            Logger::uninstallBackend(session.backend);
            session.logger()->info("to the remaining channels");
        });
    if (uninstalled) {
        session.attempt("being installed again", [&] {
            Logger::installBackend(session.backend);
            session.logger()->info("installed again");
        });
    }
    session.reportOk("it can be uninstalled, logged to, and installed again");
}

void tryWaitingMessages(CheckSession& session) {
    constexpr int moreThanACacheHolds = 150;
    constexpr int fewForASlowOne = 5;
    const int count = session.isSlow ? fewForASlowOne : moreThanACacheHolds;
    session.attempt("log with messages that waited in a cache", [&] {
        // Cached, since the only back end that is left declines this logger.
        Logger::uninstallBackend(session.backend);
        for (int i = 0; i < count; ++i) {
            session.logger(ProbeBackend::declinedPart)->info() << "message " << i << " waits";
        }
        Logger::installBackend(session.backend);
    });
    session.reportOk("it takes messages from a cache, and the line of a full cache");
}

} // namespace backendcheck
