#include <array>

#include "GuardedText.h"
#include "ObjectFault.h"
#include "Steps.h"
#include "Words.h"

namespace backendcheck {

using ZOL::Framework::GenericLogger::LOG_LEVEL_ERROR;
using ZOL::Framework::GenericLogger::LoggingChannel;

namespace {

constexpr std::size_t channelSlots = 4; // destructor, destructor, release, log

/// False if what there is cannot be called.
bool isChannel(Trial& trial, const std::string& check, const LoggingChannel* channel) {
    const std::string fault = objectFault(channel, typeid(LoggingChannel), channelSlots);
    if (fault.empty()) {
        return true;
    }
    trial.find(check, Result::Wrong, "what createChannel returned " + fault);
    return false;
}

} // namespace

void tryChannels(Trial& trial) {
    LoggingChannel* first = nullptr;
    LoggingChannel* second = nullptr;
    // One that nobody has asked for yet.
    const std::string name = trial.loggerName(".new");
    const bool asked =
        trial.attempt("channels", "createChannel, for the name " + inQuotes(name), [&] {
            trial.underLock([&] { first = trial.backend->createChannel(name.c_str()); });
        });
    if (!trial.isWanted("channels")) {
        return;
    }
    if (!asked) {
        trial.find("channels", Result::Note, "it throws: see exceptions");
        return;
    }
    if (first == nullptr) {
        trial.find("channels", Result::Note,
                   "it declines the logger " + inQuotes(name) +
                       "\nif it serves others, say with --logger how their names begin");
        return;
    }
    if (!isChannel(trial, "channels", first)) {
        return;
    }
    const bool again =
        trial.attempt("channels", "createChannel, for the second time for one name", [&] {
            trial.underLock([&] { second = trial.backend->createChannel(name.c_str()); });
        });
    if (!again) {
        trial.find("channels", Result::Note, "it throws: see exceptions");
    } else if (second == nullptr) {
        trial.find("channels", Result::Wrong,
                   "asked for the second time for one name, it returned null: every logger falls "
                   "silent at the next installation of any back end");
    } else if (isChannel(trial, "channels", second) &&
               trial.attempt("channels", "log to a channel that was asked for again", [&] {
                   trial.underLock([&] {
                       second->log(LOG_LEVEL_ERROR, std::string("asked for again").c_str());
                   });
               })) {
        trial.find("channels", Result::Ok,
                   first == second ? "asked twice for one name, it gives the same channel"
                                   : "asked twice for one name, it gives another channel");
    }
}

void tryNames(Trial& trial) {
    constexpr std::size_t longName = 4096;
    const std::string base = trial.loggerName();
    const std::array<std::pair<const char*, std::string>, 8> names = {{
        {"an ordinary name", base},
        {"an empty name", ""},
        {"a name of 4096 characters", base + std::string(longName - base.size() % longName, 'n')},
        {"a name in UTF-8", base + " Auftr\xC3\xA4ge \xE6\xB3\xA8\xE6\x96\x87"},
        {"a name with line breaks", base + "\r\nsecond line\n"},
        {"a name with percent signs", base + "%s%n%d{}{0}"},
        {"a name with the characters of paths", base + "/../\\a:b*c?\"<>|"},
        {"a name that is no UTF-8", base + " \xFF\xFE\xC3"},
    }};
    bool threw = false;
    for (const auto& [kind, name] : names) {
        LoggingChannel* channel = nullptr;
        {
            const GuardedText text(name);
            threw |= !trial.attempt("names", std::string("createChannel with ") + kind, [&] {
                trial.underLock([&] { channel = trial.backend->createChannel(text.get()); });
            });
        }
        if (channel == nullptr) {
            continue;
        }
        if (!isChannel(trial, "names", channel)) {
            return;
        }
        threw |= !trial.attempt("names", std::string("log, for a logger with ") + kind, [&] {
            trial.underLock(
                [&] { channel->log(LOG_LEVEL_ERROR, std::string("the name is gone").c_str()); });
        });
    }
    trial.find("names", threw ? Result::Note : Result::Ok,
               threw ? "it throws: see exceptions"
                     : "it takes names that are empty, long, of several lines or strange");
}

} // namespace backendcheck
