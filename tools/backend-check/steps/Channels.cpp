// Checks "channels" and "names": what createChannel returns.

#include <array>

#include "live/GuardedText.h"
#include "steps/Steps.h"

namespace backendcheck {

using ZOL::Framework::GenericLogger::LOG_LEVEL_ERROR;
using ZOL::Framework::GenericLogger::LoggingChannel;

namespace {

/// False if the channel cannot be used, which is then reported.
bool isChannel(CheckSession& session, LoggingChannel* channel) {
    session.beginStep("the use of what createChannel returned");
    const std::string fault = objectFault(channel);
    return fault.empty() || session.report(Result::Wrong, "what createChannel returned " + fault);
}

} // namespace

void tryChannels(CheckSession& session) {
    session.beginCheck("channels");
    LoggingChannel* first = nullptr;
    LoggingChannel* second = nullptr;
    // No logger has this name yet.
    const std::string name = session.loggerName(".new");
    const std::string quoted = '"' + name + '"';
    const bool asked = session.attemptUnderLock("createChannel, for the name " + quoted, [&] {
        first = session.backend->createChannel(name.c_str());
    });
    if (!session.isWanted("channels")) {
        return;
    }
    if (!asked) {
        session.reportOk({});
        return;
    }
    if (first == nullptr) {
        session.report(Result::Note,
                       "it declines the logger " + quoted +
                           "\nif it serves others, say with --logger how their names begin");
        return;
    }
    if (!isChannel(session, first)) {
        return;
    }
    if (!session.attemptUnderLock("createChannel, for the second time for one name",
                                  [&] { second = session.backend->createChannel(name.c_str()); })) {
        session.reportOk({});
    } else if (second == nullptr) {
        session.report(Result::Wrong,
                       "asked for the second time for one name, it returned null: every logger "
                       "falls silent at the next installation of any back end");
    } else if (isChannel(session, second) &&
               session.attemptUnderLock("log to a channel that was asked for again", [&] {
                   second->log(LOG_LEVEL_ERROR, std::string("asked for again").c_str());
               })) {
        session.report(Result::Ok, first == second
                                       ? "asked twice for one name, it gives the same channel"
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
    for (const auto& [kind, name] : names) {
        LoggingChannel* channel = nullptr;
        {
            const GuardedText text(name);
            session.attemptUnderLock(std::string("createChannel with ") + kind,
                                     [&] { channel = session.backend->createChannel(text.get()); });
        }
        if (channel == nullptr) {
            continue;
        }
        if (!isChannel(session, channel)) {
            return;
        }
        session.attemptUnderLock(std::string("log, for a logger with ") + kind, [&] {
            channel->log(LOG_LEVEL_ERROR, std::string("the name is gone").c_str());
        });
    }
    session.reportOk("it takes names that are empty, long, of several lines or strange");
}

} // namespace backendcheck
