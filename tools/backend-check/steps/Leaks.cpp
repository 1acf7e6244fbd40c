// Check "leaks".

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>

#include "live/Heap.h"
#include "live/ThisProcess.h"
#include "steps/Limits.h"
#include "steps/Steps.h"

namespace backendcheck {

namespace {

using Clock = std::chrono::steady_clock;

/// Texts of one size, logged in rounds until one of them leaves nothing on the heap.
struct Series {
    std::size_t textSize;
    int messagesOfRound;
    int maxMessages;
};

// The second one finds what is kept of large messages alone.
constexpr Series shortTexts = {1000, 100, messagesForLeak};
constexpr Series shorterTexts = {300, 100, messagesForLeak};
constexpr Series longTexts = {std::size_t{256} << 10U, 20, 300};

// A leak of this size needs no more messages.
constexpr std::ptrdiff_t enoughLeaked = std::ptrdiff_t{64} << 20U;

/// Fewer rounds say nothing: a buffer may have grown in one.
constexpr int minRounds = 3;

/// Time for a thread of the plug-in to write what is queued.
constexpr std::chrono::seconds maxDelay{2};

/// Waits until the heap has shrunk to that size. Whether it has.
bool shrinksTo(std::ptrdiff_t size) {
    constexpr std::chrono::milliseconds interval{10};
    const Clock::time_point end = Clock::now() + maxDelay;
    while (usedHeap() >= size) {
        if (Clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(interval);
    }
    return true;
}

/// What the messages left on the heap, or an empty text.
std::string heapLeak(CheckSession& session, const Series& series) {
    constexpr std::chrono::seconds maxTime{2};
    constexpr int slowRound = 4;
    const std::string text(series.textSize, 'm');
    const int count = session.isSlow ? slowRound : series.messagesOfRound;
    const std::ptrdiff_t leakOfRound = count * leakOfMessage;
    const Clock::time_point end = Clock::now() + maxTime;
    std::ptrdiff_t begin = 0;
    std::ptrdiff_t before = 0;
    int rounds = -1; // the first one is not measured: it may fill buffers
    do {
        session.attempt("log with many messages of " + std::to_string(series.textSize) + " bytes",
                        [&] {
                            for (int i = 0; i < count; ++i) {
                                session.logger()->info(text.c_str());
                            }
                        });
        if (++rounds == 0) {
            begin = before = usedHeap();
            continue;
        }
        const std::ptrdiff_t now = usedHeap();
        if (now < before + leakOfRound) {
            return {};
        }
        before = now;
    } while (rounds * count < series.maxMessages && before - begin < enoughLeaked &&
             (Clock::now() < end || rounds < minRounds));
    if (shrinksTo(begin + rounds * leakOfRound)) {
        return {};
    }
    const int messages = rounds * count;
    const std::ptrdiff_t leaked = (usedHeap() - begin) / messages;
    return "each of " + std::to_string(messages) + " messages of " +
           std::to_string(series.textSize) + " bytes left about " + std::to_string(leaked) +
           " bytes on the heap: memory leaks, or a queue has no bound";
}

/// The memory of the process that is not on the heap. The heap returns to the system only a part of
/// what is freed.
std::size_t otherMemory() {
    const std::size_t used = usedMemory();
    return used - std::min(used, keptHeap() + maxUsedHeap());
}

struct Usage {
    std::size_t memory = otherMemory();
    std::size_t handles = openHandles();
    std::size_t threads = runningThreads();
};

/// What was added to a count; it may also have become smaller.
std::size_t added(std::size_t before, std::size_t now) {
    return now - std::min(before, now);
}

std::string otherLeak(const Usage& before) {
    const Usage now;
    if (const std::size_t threads = added(before.threads, now.threads); threads > maxHandles) {
        return "the messages of this check left " + std::to_string(threads) + " threads";
    }
    if (const std::size_t handles = added(before.handles, now.handles); handles > maxHandles) {
        return "the messages of this check left " + std::to_string(handles) +
               " files or other handles open";
    }
    return {};
}

/// Logs as much as may be too much for otherLeak.
void logLongTexts(CheckSession& session) {
    constexpr std::chrono::seconds maxTime{2};
    const std::string text(longTexts.textSize, 'm');
    const Clock::time_point end = Clock::now() + maxTime;
    for (int i = 0; i < longTexts.maxMessages && Clock::now() < end; ++i) {
        session.attempt("log with many long messages",
                        [&] { session.logger()->info(text.c_str()); });
    }
}

/// What the messages left in memory that is not on the heap, or an empty text. A buffer that has
/// grown, and freed memory that the heap has not returned, do not grow again and again with more
/// messages; a leak does.
std::string otherMemoryLeak(CheckSession& session, std::size_t before, bool takesLongTexts) {
    const std::size_t now = otherMemory();
    const std::size_t memory = added(before, now);
    if (memory <= maxOtherMemory) {
        return {};
    }
    // A queue may be longer in a later round, and the heap then in more pieces.
    constexpr int moreRounds = 4;
    std::size_t last = now;
    for (int round = 0; takesLongTexts && round < moreRounds; ++round) {
        logLongTexts(session);
        const std::size_t grown = otherMemory();
        if (added(last, grown) < memory / 4) {
            return {};
        }
        last = grown;
    }
    return "the messages of this check left " + std::to_string(memory >> 20U) +
           " MiB of memory in use that is not on the heap" +
           (takesLongTexts ? ", and more messages left more" : "");
}

} // namespace

void lookForLeaks(CheckSession& session) {
    // A crash over long texts is reported already.
    const bool takesLongTexts = session.isWanted("texts");
    const int messagesBefore = session.probe().messages();
    const Usage before;
    std::string leak = heapLeak(session, takesLongTexts ? shortTexts : shorterTexts);
    if (leak.empty() && takesLongTexts) {
        leak = heapLeak(session, longTexts);
    }
    if (leak.empty() && takesLongTexts) {
        logLongTexts(session);
    }
    std::string other = otherLeak(before);
    if (other.empty()) {
        other = otherMemoryLeak(session, before.memory, takesLongTexts);
    }
    if (!other.empty()) {
        leak += (leak.empty() ? "" : "\n") + other;
    }
    if (leak.empty()) {
        session.reportOk("no memory, handles or threads add up with " +
                         std::to_string(session.probe().messages() - messagesBefore) + " messages");
    } else {
        session.report(Result::Wrong, leak + "\na host that runs for long runs out of them");
    }
}

void lookForFreedMemory(CheckSession& session) {
    if (isFreedBlockChanged()) {
        session.report(Result::Wrong, "it wrote to memory that it had freed before");
    } else {
        session.reportOk("it wrote to no memory that was freed");
    }
}

} // namespace backendcheck
