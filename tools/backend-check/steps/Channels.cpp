// Checks "channels" and "names": what createChannel returns.

#include <array>
#include <chrono>
#include <string>

#include "live/GuardedText.h"
#include "live/ThisProcess.h"
#include "steps/Limits.h"
#include "steps/ObjectFault.h"
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

/// Calls createChannel again and again with one name, as each installation of a back end does.
/// Returns what that leaves in use, or an empty text.
std::string handlesOfRepeatedChannels(CheckSession& session, const std::string& name) {
    constexpr std::chrono::seconds maxTime{2};
    const auto end = std::chrono::steady_clock::now() + maxTime;
    const std::size_t handlesBefore = openHandles();
    const std::size_t threadsBefore = runningThreads();
    int count = 0;
    session.attemptUnderLock("createChannel, again and again for one name", [&] {
        while (count < repeatedChannels && std::chrono::steady_clock::now() < end) {
            (void)session.backend->createChannel(name.c_str());
            ++count;
        }
    });
    const std::string asked = "asked " + std::to_string(count) + " times for one name, it left ";
    const std::size_t handles = openHandles();
    const std::size_t threads = runningThreads();
    if (threads > threadsBefore + maxHandlesOfRepeatedChannels) {
        return asked + std::to_string(threads - threadsBefore) + " threads";
    }
    if (handles > handlesBefore + maxHandlesOfRepeatedChannels) {
        return asked + std::to_string(handles - handlesBefore) + " files or other handles open";
    }
    return {};
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
                           "\nif it serves others, set the beginning of their names with --logger");
        return;
    }
    if (!isChannel(session, first)) {
        return;
    }
    const bool again =
        session.attemptUnderLock("createChannel, for the second time for one name",
                                 [&] { second = session.backend->createChannel(name.c_str()); });
    if (again && second == nullptr) {
        session.report(Result::Wrong,
                       "asked for the second time for one name, it returned null: every logger "
                       "becomes silent at the next installation of any back end");
        return;
    }
    if (again && !isChannel(session, second)) {
        return;
    }
    const bool usable =
        again && session.attemptUnderLock("log to a channel that was asked for again", [&] {
            second->log(LOG_LEVEL_ERROR, std::string("asked for again").c_str());
        });
    const std::string left = usable ? handlesOfRepeatedChannels(session, name) : std::string();
    if (!left.empty()) {
        session.report(Result::Wrong, left);
    } else {
        session.reportOk(first == second ? "asked twice for one name, it returns the same channel"
                                         : "asked twice for one name, it returns another channel");
    }
}

void tryNames(CheckSession& session) {
    constexpr std::size_t longName = 4096;
    const std::string base = session.loggerName();
    const std::array<std::pair<const char*, std::string>, 8> names = {{
        {"an ordinary name", base + ".ordinary"},
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
    session.reportOk("it takes names that are empty, long, of several lines or not UTF-8");
}

} // namespace backendcheck
