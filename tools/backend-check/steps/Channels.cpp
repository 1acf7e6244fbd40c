#include <array>

#include "Text.h"
#include "live/GuardedText.h"
#include "live/ObjectFault.h"
#include "steps/Steps.h"

namespace backendcheck {

using ZOL::Framework::GenericLogger::LOG_LEVEL_ERROR;
using ZOL::Framework::GenericLogger::LoggingChannel;

namespace {

constexpr std::size_t channelSlots = 4; // destructor, destructor, release, log

/// False if what there is cannot be called.
bool isChannel(CheckSession& session, const std::string& check, const LoggingChannel* channel) {
    const std::string fault = objectFault(channel, typeid(LoggingChannel), channelSlots);
    if (fault.empty()) {
        return true;
    }
    session.report(check, Result::Wrong, "what createChannel returned " + fault);
    return false;
}

} // namespace

void tryChannels(CheckSession& session) {
    LoggingChannel* first = nullptr;
    LoggingChannel* second = nullptr;
    // One that nobody has asked for yet.
    const std::string name = session.loggerName(".new");
    const bool asked =
        session.attempt("channels", "createChannel, for the name " + inQuotes(name), [&] {
            session.underLock([&] { first = session.backend->createChannel(name.c_str()); });
        });
    if (!session.isWanted("channels")) {
        return;
    }
    if (!asked) {
        session.report("channels", Result::Note, "it throws: see exceptions");
        return;
    }
    if (first == nullptr) {
        session.report("channels", Result::Note,
                       "it declines the logger " + inQuotes(name) +
                           "\nif it serves others, say with --logger how their names begin");
        return;
    }
    if (!isChannel(session, "channels", first)) {
        return;
    }
    const bool again =
        session.attempt("channels", "createChannel, for the second time for one name", [&] {
            session.underLock([&] { second = session.backend->createChannel(name.c_str()); });
        });
    if (!again) {
        session.report("channels", Result::Note, "it throws: see exceptions");
    } else if (second == nullptr) {
        session.report(
            "channels", Result::Wrong,
            "asked for the second time for one name, it returned null: every logger falls "
            "silent at the next installation of any back end");
    } else if (isChannel(session, "channels", second) &&
               session.attempt("channels", "log to a channel that was asked for again", [&] {
                   session.underLock([&] {
                       second->log(LOG_LEVEL_ERROR, std::string("asked for again").c_str());
                   });
               })) {
        session.report("channels", Result::Ok,
                       first == second ? "asked twice for one name, it gives the same channel"
                                       : "asked twice for one name, it gives another channel");
    }
}

void tryNames(CheckSession& session) {
    constexpr std::size_t longName = 4096;
    const std::string base = session.loggerName();
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
            threw |= !session.attempt("names", std::string("createChannel with ") + kind, [&] {
                session.underLock([&] { channel = session.backend->createChannel(text.get()); });
            });
        }
        if (channel == nullptr) {
            continue;
        }
        if (!isChannel(session, "names", channel)) {
            return;
        }
        threw |= !session.attempt("names", std::string("log, for a logger with ") + kind, [&] {
            session.underLock(
                [&] { channel->log(LOG_LEVEL_ERROR, std::string("the name is gone").c_str()); });
        });
    }
    session.report("names", threw ? Result::Note : Result::Ok,
                   threw ? "it throws: see exceptions"
                         : "it takes names that are empty, long, of several lines or strange");
}

} // namespace backendcheck
