#include <array>
#include <chrono>
#include <limits>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "live/GuardedText.h"
#include "steps/Steps.h"

namespace backendcheck {

using namespace ZOL::Framework::GenericLogger;

namespace {

/// Time for a thread of the plug-in's to come to what it has kept.
constexpr std::chrono::milliseconds lateReaders{150};

/// Each text is gone when it has been logged.
void logTo(CheckSession& session, LoggingLevel level, const std::vector<std::string>& texts) {
    session.underLock([&] {
        LoggingChannel* const channel =
            session.backend->createChannel(session.loggerName().c_str());
        for (std::size_t i = 0; channel != nullptr && i < texts.size(); ++i) {
            const GuardedText text(texts[i]);
            channel->log(level, text.get());
        }
    });
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
    bool threw = false;
    for (const auto& entry : texts) {
        const std::string& content = entry.second;
        threw |= !session.attempt("texts", std::string("log with ") + entry.first, [&] {
            logTo(session, LOG_LEVEL_ERROR, {content, "another one"});
        });
    }
    session.beginStep("texts", "what it does later with texts that it was handed before");
    std::this_thread::sleep_for(lateReaders);
    session.report("texts", threw ? Result::Note : Result::Ok,
                   threw ? "it throws: see exceptions"
                         : "it takes texts that are empty, of 1 MiB, of several lines or strange");
}

void tryLevels(CheckSession& session) {
    bool threw = false;
    for (const int level : {0, 10, 20, 30, 40, 50, 60, 35, 1000, -1,
                            std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        threw |= !session.attempt("levels", "log with level " + std::to_string(level), [&] {
            session.underLock([&] {
                LoggingChannel* const channel =
                    session.backend->createChannel(session.loggerName().c_str());
                if (channel != nullptr) {
                    channel->log(static_cast<LoggingLevel>(level),
                                 std::string("of any level").c_str());
                }
            });
        });
    }
    session.report("levels", threw ? Result::Note : Result::Ok,
                   threw ? "it throws: see exceptions" : "it takes level 0 and every other number");
}

void tryUninstallation(CheckSession& session) {
    const bool survived =
        session.attempt("uninstall", "log after uninstallBackend, with another back end installed",
                        [&] {
                            Logger::uninstallBackend(session.backend);
                            session.logger()->info("to the channels that it leaves behind");
                        }) &&
        session.attempt("uninstall", "being installed again", [&] {
            Logger::installBackend(session.backend);
            session.logger()->info("installed again");
        });
    session.report("uninstall", survived ? Result::Ok : Result::Note,
                   survived ? "it can be uninstalled, logged to, and installed again"
                            : "it throws: see exceptions");
}

void tryWaitingMessages(CheckSession& session) {
    // Behind its back: it is away, and the checker's own back end declines that name.
    constexpr int moreThanACacheHolds = 150;
    constexpr int fewForASlowOne = 5;
    const int count = session.isSlow ? fewForASlowOne : moreThanACacheHolds;
    const bool delivered =
        session.attempt("waiting", "log with messages that waited in a cache", [&] {
            Logger::uninstallBackend(session.backend);
            for (int i = 0; i < count; ++i) {
                session.logger(ProbeBackend::declinedEnd)->info() << "message " << i << " waits";
            }
            Logger::installBackend(session.backend);
        });
    session.report("waiting", delivered ? Result::Ok : Result::Note,
                   delivered ? "it takes messages that waited, and the line of a full cache"
                             : "it throws: see exceptions");
}

} // namespace backendcheck
