#include <chrono>
#include <thread>
#include <vector>

#include "steps/Steps.h"

namespace backendcheck {

using ZOL::Framework::GenericLogger::Logger;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int threadCount = 8;
constexpr int messagesEach = 50;

// A slow one need not be called that often.
void logALot(CheckSession& session, int thread, Clock::time_point end) {
    const std::string own = ".thread" + std::to_string(thread);
    try {
        for (int i = 0; i < messagesEach && Clock::now() < end; ++i) {
            session.logger()->error() << "to a logger that all share: " << i;
            session.logger(own)->info() << "to a logger of its own: " << i;
            constexpr int now = 10;
            if (i % now == 0) {
                session.logger(own + "." + std::to_string(i))->debug("to a new logger");
            }
        }
    } catch (...) {
        session.exceptionIn("log or createChannel, called from one of eight threads");
    }
}

} // namespace

void tryThreads(CheckSession& session) {
    const bool hadThrown = session.hasThrown();
    session.attempt("threads", "log and createChannel, called from eight threads", [&] {
        const Clock::time_point end = Clock::now() + std::chrono::seconds(2);
        std::vector<std::thread> threads;
        threads.reserve(threadCount);
        for (int i = 0; i < threadCount; ++i) {
            threads.emplace_back([&session, i, end] { logALot(session, i, end); });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    });
    const bool threw = session.hasThrown() && !hadThrown;
    session.report("threads", threw ? Result::Note : Result::Ok,
                   threw ? "it throws: see exceptions"
                         : "it takes messages from eight threads at once");
}

} // namespace backendcheck
