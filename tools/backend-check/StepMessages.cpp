#include <array>
#include <chrono>
#include <limits>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "GuardedText.h"
#include "Steps.h"

namespace backendcheck {

using namespace ZOL::Framework::GenericLogger;

namespace {

/// Time for a thread of the plug-in's to come to what it has kept.
constexpr std::chrono::milliseconds lateReaders{150};

/// Each text is gone when it has been logged.
void logTo(Trial& trial, LoggingLevel level, const std::vector<std::string>& texts) {
    trial.underLock([&] {
        LoggingChannel* const channel = trial.backend->createChannel(trial.loggerName().c_str());
        for (std::size_t i = 0; channel != nullptr && i < texts.size(); ++i) {
            const GuardedText text(texts[i]);
            channel->log(level, text.get());
        }
    });
}

} // namespace

void tryTexts(Trial& trial) {
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
        threw |= !trial.attempt("texts", std::string("log with ") + entry.first, [&] {
            logTo(trial, LOG_LEVEL_ERROR, {content, "another one"});
        });
    }
    trial.at("texts", "what it does later with texts that it was handed before");
    std::this_thread::sleep_for(lateReaders);
    trial.find("texts", threw ? Result::Note : Result::Ok,
               threw ? "it throws: see exceptions"
                     : "it takes texts that are empty, of 1 MiB, of several lines or strange");
}

void tryLevels(Trial& trial) {
    bool threw = false;
    for (const int level : {0, 10, 20, 30, 40, 50, 60, 35, 1000, -1,
                            std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        threw |= !trial.attempt("levels", "log with level " + std::to_string(level), [&] {
            trial.underLock([&] {
                LoggingChannel* const channel =
                    trial.backend->createChannel(trial.loggerName().c_str());
                if (channel != nullptr) {
                    channel->log(static_cast<LoggingLevel>(level),
                                 std::string("of any level").c_str());
                }
            });
        });
    }
    trial.find("levels", threw ? Result::Note : Result::Ok,
               threw ? "it throws: see exceptions" : "it takes level 0 and every other number");
}

void tryUninstallation(Trial& trial) {
    const bool survived =
        trial.attempt("uninstall", "log after uninstallBackend, with another back end installed",
                      [&] {
                          Logger::uninstallBackend(trial.backend);
                          trial.logger()->info("to the channels that it leaves behind");
                      }) &&
        trial.attempt("uninstall", "being installed again", [&] {
            Logger::installBackend(trial.backend);
            trial.logger()->info("installed again");
        });
    trial.find("uninstall", survived ? Result::Ok : Result::Note,
               survived ? "it can be uninstalled, logged to, and installed again"
                        : "it throws: see exceptions");
}

void tryWaitingMessages(Trial& trial) {
    // Behind its back: it is away, and the checker's own back end declines that name.
    constexpr int moreThanACacheHolds = 150;
    constexpr int fewForASlowOne = 5;
    const int count = trial.isSlow ? fewForASlowOne : moreThanACacheHolds;
    const bool delivered =
        trial.attempt("waiting", "log with messages that waited in a cache", [&] {
            Logger::uninstallBackend(trial.backend);
            for (int i = 0; i < count; ++i) {
                trial.logger(Witness::declinedEnd)->info() << "message " << i << " waits";
            }
            Logger::installBackend(trial.backend);
        });
    trial.find("waiting", delivered ? Result::Ok : Result::Note,
               delivered ? "it takes messages that waited, and the line of a full cache"
                         : "it throws: see exceptions");
}

} // namespace backendcheck
