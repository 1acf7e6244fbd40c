// Check "time".

#include <algorithm>
#include <array>
#include <chrono>
#include <string>
#include <vector>

#include "Text.h"
#include "steps/Limits.h"
#include "steps/Steps.h"

namespace backendcheck {

namespace {

using namespace ZOL::Framework::GenericLogger;

// Some back ends are slow at a few of them, to send a mail for example.
constexpr std::array namedLevels = {LOG_LEVEL_FATAL, LOG_LEVEL_ERROR, LOG_LEVEL_WARNING,
                                    LOG_LEVEL_INFO,  LOG_LEVEL_DEBUG, LOG_LEVEL_TRACE};

using Clock = std::chrono::steady_clock;
template <typename Call>
Clock::duration timeOf(const Call& call) {
    const Clock::time_point start = Clock::now();
    call();
    return Clock::now() - start;
}

Clock::duration medianOf(std::vector<Clock::duration>& times) {
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

/// The times of single messages.
std::vector<Clock::duration> timesOfMessages(CheckSession& session) {
    constexpr std::size_t count = 300;
    // A slow back end need not be called that often.
    constexpr std::chrono::seconds maxTime{2};
    const Clock::time_point end = Clock::now() + maxTime;
    std::vector<Clock::duration> times;
    for (std::size_t i = 0; i < count && Clock::now() < end; ++i) {
        // A crash over levels is reported already.
        const LoggingLevel level =
            session.isWanted("levels") ? namedLevels[i % namedLevels.size()] : LOG_LEVEL_INFO;
        Clock::duration time{};
        session.attempt("log with a short text", [&] {
            time = timeOf([&] { session.logger()->log(level, "how long does it take?"); });
        });
        times.push_back(time);
    }
    return times;
}

} // namespace

void measureNewLoggers(CheckSession& session) {
    constexpr int count = 3;
    std::vector<Clock::duration> creations;
    std::vector<Clock::duration> firstMessages;
    for (int i = 0; i < count; ++i) {
        const std::string name = ".first" + std::to_string(i);
        session.attempt("createChannel, for a new logger",
                        [&] { creations.push_back(timeOf([&] { (void)session.logger(name); })); });
        session.attempt("log, for a new logger", [&] {
            firstMessages.push_back(
                timeOf([&] { session.logger(name)->info("a logger's first message"); }));
        });
    }
    if (creations.empty() || firstMessages.empty()) {
        return;
    }
    const Clock::duration creation = medianOf(creations);
    const Clock::duration first = medianOf(firstMessages);
    if (creation > maxOfCreateChannel) {
        session.slowness += "\ncreateChannel takes " + inMilliseconds(creation);
    }
    if (first > maxOfFirstMessage) {
        session.slowness += "\nthe first message of a logger takes " + inMilliseconds(first);
    }
    session.isSlow = creation + first > maxOfMessages;
}

void measureTime(CheckSession& session) {
    std::vector<Clock::duration> times = timesOfMessages(session);
    const Clock::duration median = medianOf(times);
    const Clock::duration worst = times.back();
    session.isSlow = session.isSlow || median > maxMedianOfMessages;
    const std::string text = "the median time of a message is " + inMilliseconds(median) +
                             ", the maximum " + inMilliseconds(worst) + session.slowness;
    const bool isSlow =
        median > maxMedianOfMessages || worst > maxOfMessages || !session.slowness.empty();
    if (isSlow && !session.hasThrownInCheck()) {
        session.report(Result::Note,
                       text +
                           "\nall loggers of the process wait for so long; is the machine busy?");
    } else {
        session.reportOk(text);
    }
}

} // namespace backendcheck
