// Signals and descriptors of the connection of the Network back end.

#include "Connection.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <future>
#include <iterator>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/time.h>
#include <unistd.h>

#include "Collector.h"
#include "FreshProcess.h"
#include "ReopeningSink.h"

using namespace ZOL::Backends;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Protocol = Connection::Protocol;

namespace {

constexpr const char* loopback = "127.0.0.1";
constexpr auto longTimeout = 20s; // of a statement that does not reach it
constexpr auto timeout = 200ms;
constexpr auto maxDuration = 5s; // against a hang, also on a busy machine

constexpr std::size_t moreThanBuffersHold = std::size_t{32} * 1024 * 1024;

volatile std::sig_atomic_t signals = 0;

/// Interrupts the waits of this process a hundred times per second, for longer than a test may
/// take.
class SignalStorm {
public:
    SignalStorm() {
        struct sigaction action = {};
        action.sa_handler = [](int) {
            signals = signals + 1;
        };
        sigaction(SIGALRM, &action, nullptr); // without SA_RESTART
        setInterval(10000);
    }
    SignalStorm(const SignalStorm&) = delete;
    SignalStorm& operator=(const SignalStorm&) = delete;
    ~SignalStorm() { setInterval(0); }

private:
    static void setInterval(int microseconds) {
        const itimerval interval{{0, microseconds}, {0, microseconds}};
        setitimer(ITIMER_REAL, &interval, nullptr);
    }
};

/// Expects that an action ends with SinkTimeout at the deadline, not earlier and not much later.
template <class Action>
void expectTimeout(Action action) {
    signals = 0;
    const auto begin = Clock::now();
    EXPECT_THROW(action(), SinkTimeout);
    EXPECT_GE(Clock::now() - begin, timeout - 1ms);
    EXPECT_LT(Clock::now() - begin, maxDuration);
    EXPECT_GT(signals, 5);
}

TEST(ConnectionUnderSignals, ConnectsUntilItsDeadline) {
    support::inFreshProcess([] {
        const Collector unresponsive(Collector::Kind::unresponsive);
        StatementTimeout statement(timeout);
        const SignalStorm storm;
        expectTimeout([&] { Connection(Protocol::tcp, loopback, unresponsive.port(), statement); });
    });
}

TEST(ConnectionUnderSignals, SendsUntilItsDeadline) {
    support::inFreshProcess([] {
        Collector collector(Collector::Kind::tcp);
        StatementTimeout statement(timeout);
        Connection connection(Protocol::tcp, loopback, collector.port(), statement);
        statement.end();
        const std::string text(moreThanBuffersHold, 'x');
        const SignalStorm storm;
        expectTimeout([&] { connection.send(text.data(), text.size()); });
    });
}

TEST(ConnectionUnderSignals, SendsALongText) {
    support::inFreshProcess([] {
        Collector collector(Collector::Kind::tcp);
        StatementTimeout statement(longTimeout);
        Connection connection(Protocol::tcp, loopback, collector.port(), statement);
        std::string text(moreThanBuffersHold, '.');
        text.back() = '\n';
        sigset_t alarm;
        sigemptyset(&alarm);
        sigaddset(&alarm, SIGALRM);
        pthread_sigmask(SIG_BLOCK, &alarm, nullptr); // for the reader, which inherits it
        std::string received;
        std::thread reader([&] {
            collector.accept();
            std::this_thread::sleep_for(100ms);
            received = collector.receive("\n");
        });
        pthread_sigmask(SIG_UNBLOCK, &alarm, nullptr);
        {
            const SignalStorm storm;
            connection.send(text.data(), text.size());
        }
        reader.join();
        EXPECT_TRUE(received == text);
    });
}

TEST(ConnectionUnderSignals, RaisesNoneItself) {
    support::inFreshProcess([] {
        Collector collector(Collector::Kind::tcp);
        StatementTimeout statement(longTimeout);
        Connection connection(Protocol::tcp, loopback, collector.port(), statement);
        collector.accept();
        // The collector ends its direction and then the connection while a message is being sent:
        // the system answers EPIPE.
        const auto closing = std::async(std::launch::async, [&] {
            EXPECT_EQ(collector.read(1), "x");
            collector.endSending();
            collector.disconnect();
        });
        const std::string text(moreThanBuffersHold, 'x');
        try {
            connection.send(text.data(), text.size());
            ADD_FAILURE() << "the collector has not read it";
        } catch (const std::system_error& error) {
            EXPECT_EQ(error.code().value(), EPIPE) << error.what();
        }
    });
}

/// Closes standard streams, and restores them.
class ClosedStreams {
public:
    explicit ClosedStreams(std::vector<int> streams) : streams_(std::move(streams)) {
        for (const int stream : streams_) {
            saved_.push_back(fcntl(stream, F_DUPFD_CLOEXEC, 100));
            close(stream);
        }
    }
    ClosedStreams(const ClosedStreams&) = delete;
    ClosedStreams& operator=(const ClosedStreams&) = delete;
    ~ClosedStreams() {
        for (std::size_t i = 0; i < streams_.size(); ++i) {
            dup2(saved_[i], streams_[i]);
            close(saved_[i]);
        }
    }

private:
    std::vector<int> streams_;
    std::vector<int> saved_;
};

std::vector<int> openDescriptors() {
    std::vector<int> open;
    for (int descriptor = 0; descriptor < 100; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) != -1) {
            open.push_back(descriptor);
        }
    }
    return open;
}

/// Connects while standard streams are closed. Expects that this opens one descriptor, which is
/// none of them and is closed on exec, and that it sends.
void expectDescriptorOfItsOwn(const std::vector<int>& closedStreams, Collector::Kind kind,
                              Protocol protocol) {
    Collector collector(kind);
    StatementTimeout statement(longTimeout);
    std::vector<int> added;
    int flags = 0;
    {
        const ClosedStreams closed(closedStreams);
        const std::vector<int> before = openDescriptors();
        Connection connection(protocol, loopback, collector.port(), statement);
        const std::vector<int> during = openDescriptors();
        std::set_difference(during.begin(), during.end(), before.begin(), before.end(),
                            std::back_inserter(added));
        flags = added.empty() ? -1 : fcntl(added.front(), F_GETFD);
        connection.send("message\n", 8);
    }
    ASSERT_EQ(added.size(), 1U);
    EXPECT_GT(added.front(), STDERR_FILENO);
    EXPECT_EQ(flags, FD_CLOEXEC);
    EXPECT_EQ(collector.receive("\n"), "message\n");
}

TEST(ConnectionDescriptor, IsNoStandardStreamIfAllAreClosed) {
    support::inFreshProcess([] {
        expectDescriptorOfItsOwn({0, 1, 2}, Collector::Kind::tcp, Protocol::tcp);
        expectDescriptorOfItsOwn({0, 1, 2}, Collector::Kind::udp, Protocol::udp);
    });
}

TEST(ConnectionDescriptor, IsNotStandardErrorIfThatIsClosed) {
    support::inFreshProcess(
        [] { expectDescriptorOfItsOwn({2}, Collector::Kind::tcp, Protocol::tcp); });
}

TEST(ConnectionDescriptor, IsClosedOnExec) {
    expectDescriptorOfItsOwn({}, Collector::Kind::tcp, Protocol::tcp);
}

} // namespace
