// Checks "time" and "leaks".

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <sstream>
#include <vector>

#include "live/ThisProcess.h"
#include "steps/Steps.h"

namespace backendcheck {

namespace {

using namespace ZOL::Framework::GenericLogger;

constexpr int messageCount = 300;

// Some back ends are slow at a few of them, to send a mail for example.
constexpr std::array namedLevels = {LOG_LEVEL_FATAL, LOG_LEVEL_ERROR, LOG_LEVEL_WARNING,
                                    LOG_LEVEL_INFO,  LOG_LEVEL_DEBUG, LOG_LEVEL_TRACE};

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

std::string inMilliseconds(Clock::duration time) {
    std::ostringstream text;
    text.precision(3);
    text << std::fixed << Milliseconds(time).count() << " ms";
    return text.str();
}

} // namespace

void measureTime(CheckSession& session) {
    constexpr std::chrono::milliseconds slowWorst{100};
    constexpr std::chrono::milliseconds slowMedian{10};
    std::vector<Clock::duration> times;
    // A slow back end need not be called that often.
    const Clock::time_point end = Clock::now() + std::chrono::seconds(3);
    for (std::size_t i = 0; i < messageCount && Clock::now() < end; ++i) {
        // A crash over levels is reported already.
        const LoggingLevel level =
            session.isWanted("levels") ? namedLevels[i % namedLevels.size()] : LOG_LEVEL_INFO;
        Clock::time_point start;
        session.attempt("log with a short text", [&] {
            start = Clock::now();
            session.logger()->log(level, "how long does it take?");
        });
        times.push_back(Clock::now() - start);
    }
    std::sort(times.begin(), times.end());
    const Clock::duration median = times[times.size() / 2];
    const Clock::duration worst = times.back();
    session.isSlow = median > slowMedian;
    const std::string text = "a message takes " + inMilliseconds(median) + " as a rule, " +
                             inMilliseconds(worst) + " at worst";
    if (!session.hasThrownInCheck() && (median > slowMedian || worst > slowWorst)) {
        session.report(Result::Note,
                       text +
                           "\nall loggers of the process wait for as long; is the machine busy?");
    } else {
        session.reportOk(text);
    }
}

void lookForLeaks(CheckSession& session) {
    constexpr std::size_t tooManyHandles = 100;
    constexpr std::size_t tooMuchMemory = std::size_t{48} << 20U;
    const std::string bigText(std::size_t{256} << 10U, 'm');
    constexpr int bigCount = 300; // 75 MiB in all
    const std::size_t memory = usedMemory();
    const Clock::time_point end = Clock::now() + std::chrono::seconds(2);
    for (int i = 0; i < messageCount && Clock::now() < end; ++i) {
        session.attempt("log with many messages",
                        [&] { session.logger()->info("does it keep something?"); });
    }
    const std::size_t moreHandles =
        std::max(openHandles(), session.handlesBefore) - session.handlesBefore;
    const std::size_t moreThreads =
        std::max(runningThreads(), session.threadsBefore) - session.threadsBefore;
    const Clock::time_point bigEnd = Clock::now() + std::chrono::seconds(2);
    // A crash over long texts is reported already.
    for (int i = 0; session.isWanted("texts") && i < bigCount && Clock::now() < bigEnd; ++i) {
        session.attempt("log with many long messages",
                        [&] { session.logger()->info(bigText.c_str()); });
    }
    const std::size_t moreMemory = std::max(usedMemory(), memory) - memory;

    if (moreThreads > tooManyHandles) {
        session.report(Result::Wrong, "the messages so far left " + std::to_string(moreThreads) +
                                          " threads behind");
    } else if (moreHandles > tooManyHandles) {
        session.report(Result::Wrong, "the messages so far left " + std::to_string(moreHandles) +
                                          " files or other handles open");
    } else if (moreMemory > tooMuchMemory) {
        session.report(Result::Note,
                       "75 MiB of messages left " + std::to_string(moreMemory >> 20U) +
                           " MiB of memory in use: a host that runs for long runs out of it");
    } else {
        session.report(Result::Ok, "it keeps no files, threads or memory for each message");
    }
}

} // namespace backendcheck
