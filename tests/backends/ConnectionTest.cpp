// The connection of the Network back end, with timeouts that are shorter than the product's.

#include "Connection.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "Collector.h"
#include "OpenHandles.h"
#include "ReopeningSink.h"

using namespace ZOL::Backends;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Protocol = Connection::Protocol;

namespace {

constexpr const char* loopback = "127.0.0.1";
constexpr const char* noHost = "::1%no-such-interface"; // no name server is asked
constexpr auto longTimeout = 20s;                       // of a statement that does not reach it
constexpr auto timeout = 200ms;
constexpr auto maxDuration = 5s; // against a hang, also on a busy machine

constexpr std::size_t moreThanBuffersHold = std::size_t{32} * 1024 * 1024;

/// A text in which each position differs from those before it, closed by a line feed.
std::string numberedText(std::size_t size) {
    std::string text;
    for (int i = 0; text.size() < size; ++i) {
        text += std::to_string(i) + ";";
    }
    return text + "\n";
}

void expectSame(const std::string& received, const std::string& expected) {
    ASSERT_EQ(received.size(), expected.size());
    EXPECT_TRUE(received == expected);
}

template <class Exception, class Action>
std::string thrownText(Action action) {
    try {
        action();
    } catch (const Exception& error) {
        return error.what();
    }
    return "nothing thrown";
}

void send(Connection& connection, const std::string& text) {
    connection.send(text.data(), text.size());
}

/// Sends until a statement times out. Windows may accept one text of any length at once.
std::string timeoutOfSending(Connection& connection) {
    constexpr std::size_t textSize = std::size_t{1024} * 1024;
    const std::string text(textSize, 'x');
    return thrownText<SinkTimeout>([&] {
        for (std::size_t sent = 0; sent < moreThanBuffersHold; sent += textSize) {
            send(connection, text);
        }
    });
}

TEST(Connection, SendsALongTextUnchangedToACollectorThatReadsLate) {
    Collector collector(Collector::Kind::tcp);
    StatementTimeout statement(longTimeout);
    Connection connection(Protocol::tcp, loopback, collector.port(), statement);
    const std::string text = numberedText(moreThanBuffersHold);
    std::string received;
    std::thread reader([&] {
        collector.accept();
        std::this_thread::sleep_for(100ms);
        received = collector.receive("\n");
    });
    send(connection, text);
    reader.join();
    expectSame(received, text);
}

TEST(Connection, TimesOutIfTheHostDoesNotAnswer) {
    const Collector unresponsive(Collector::Kind::unresponsive);
    StatementTimeout statement(timeout);
    const auto begin = Clock::now();
    EXPECT_EQ(
        thrownText<SinkTimeout>([&] {
            const Connection connection(Protocol::tcp, loopback, unresponsive.port(), statement);
        }),
        "no connection to 127.0.0.1 port " + std::to_string(unresponsive.port()) + ": no answer");
    EXPECT_GE(Clock::now() - begin, timeout - 1ms);
    EXPECT_LT(Clock::now() - begin, maxDuration);
}

TEST(Connection, TimesOutIfTheCollectorDoesNotRead) {
    Collector collector(Collector::Kind::tcp);
    StatementTimeout statement(timeout);
    Connection connection(Protocol::tcp, loopback, collector.port(), statement);
    collector.accept();
    const auto begin = Clock::now();
    EXPECT_EQ(timeoutOfSending(connection), "the collector takes no more messages");
    EXPECT_LT(Clock::now() - begin, maxDuration);
}

TEST(Connection, TimesOutIfTheCollectorReadsSlowly) {
    Collector collector(Collector::Kind::tcp);
    StatementTimeout statement(timeout);
    Connection connection(Protocol::tcp, loopback, collector.port(), statement);
    collector.accept();
    std::atomic<bool> done = false;
    std::thread reader([&] { // less than two megabytes per second
        while (!done && !collector.read(std::size_t{16} * 1024).empty()) {
            std::this_thread::sleep_for(10ms);
        }
    });
    EXPECT_EQ(timeoutOfSending(connection), "the collector takes no more messages");
    done = true;
    reader.join();
}

TEST(Connection, DeadlineOfAStatementCoversAllItsConnections) {
    Collector collector(Collector::Kind::tcp);
    StatementTimeout statement(longTimeout);
    Connection connection(Protocol::tcp, loopback, collector.port(), statement);
    const auto deadline = statement.deadline();
    std::this_thread::sleep_for(10ms);
    EXPECT_EQ(statement.deadline(), deadline) << "the statement goes on";
    send(connection, "first\n");
    EXPECT_GT(statement.deadline(), deadline) << "the message is sent, so that is the next one";
    collector.disconnect();
    std::this_thread::sleep_for(50ms); // until the end of the connection has arrived
    const auto deadlineOfSecond = statement.deadline();
    EXPECT_THROW(send(connection, "second\n"), std::runtime_error);
    Connection again(Protocol::tcp, loopback, collector.port(), statement);
    EXPECT_EQ(statement.deadline(), deadlineOfSecond);
}

TEST(Connection, StatementAfterADeadlineHasItsOwn) {
    StatementTimeout statement(20ms);
    const auto deadline = statement.deadline();
    Clock::time_point now = Clock::now();
    for (; now < deadline; now = Clock::now()) {
        std::this_thread::sleep_for(1ms);
    }
    EXPECT_GE(statement.deadline(), now + 20ms);
}

TEST(Connection, NoticesTheEndOfACollectorThatHasSentSomething) {
    Collector collector(Collector::Kind::tcp);
    StatementTimeout statement(longTimeout);
    Connection connection(Protocol::tcp, loopback, collector.port(), statement);
    collector.send(std::string(200000, 'b') + "welcome\n");
    send(connection, "first\n");
    EXPECT_EQ(collector.receive("\n"), "first\n");
    collector.send("goodbye\n");
    collector.disconnect();
    std::this_thread::sleep_for(50ms); // until the end of the connection has arrived
    EXPECT_EQ(thrownText<std::runtime_error>([&] { send(connection, "second\n"); }),
              "the collector has closed the connection");
}

/// Lets the collector send until the buffers of both sides are full, and returns how much that is.
std::size_t fillBuffers(Collector& collector) {
    const std::string noise(std::size_t{64} * 1024, 'n');
    std::size_t sent = 0;
    for (int pauses = 0; pauses < 5;) {
        const long long size = collector.send(noise);
        if (size > 0) {
            sent += static_cast<std::size_t>(size);
        } else {
            ++pauses;
            std::this_thread::sleep_for(2ms);
        }
    }
    return sent;
}

TEST(Connection, ReadsOnlyAPartOfWhatACollectorSendsThatNeverStops) {
    Collector collector(Collector::Kind::tcp);
    StatementTimeout statement(longTimeout);
    Connection connection(Protocol::tcp, loopback, collector.port(), statement);
    const std::size_t all = fillBuffers(collector);
    send(connection, "first\n");
    const std::size_t discarded = fillBuffers(collector);
    EXPECT_LT(discarded, all / 2);
    send(connection, "second\n");
    EXPECT_EQ(collector.receive("second\n"), "first\nsecond\n");
}

TEST(Connection, GivesTheReasonWhyAHostHasNoAddress) {
    StatementTimeout statement(longTimeout);
    const std::string text = thrownText<std::runtime_error>(
        [&] { const Connection connection(Protocol::tcp, noHost, 1, statement); });
    const std::string begin = "there is no address for the host " + std::string(noHost) + ": ";
    EXPECT_EQ(text.substr(0, begin.size()), begin);
    EXPECT_GT(text.size(), begin.size() + 5) << text;
    EXPECT_EQ(text.find_first_of("0123456789", begin.size()), std::string::npos)
        << "no bare number: " << text;
}

TEST(Connection, ReleasesWhatAFailedAttemptHasOpened) {
    int closedPort = 0;
    {
        const Collector gone(Collector::Kind::tcp);
        closedPort = gone.port();
    }
    const Collector unresponsive(Collector::Kind::unresponsive);
    const auto attempts = [&] {
        StatementTimeout statement(5ms);
        for (const int port : {closedPort, unresponsive.port()}) {
            EXPECT_ANY_THROW(Connection(Protocol::tcp, loopback, port, statement));
        }
        EXPECT_ANY_THROW(Connection(Protocol::tcp, noHost, 1, statement));
    };
    support::warmUpExceptions();
    attempts();
    const std::size_t before = support::openHandles();
    for (int i = 0; i < 10; ++i) {
        attempts();
    }
    EXPECT_EQ(support::openHandles(), before);
}

TEST(Connection, ReleasesWhatItHasOpened) {
    const auto sendOne = [](Collector::Kind kind, Protocol protocol) {
        const Collector collector(kind);
        StatementTimeout statement(longTimeout);
        Connection connection(protocol, loopback, collector.port(), statement);
        send(connection, "message\n");
    };
    const auto sendByBoth = [&] {
        sendOne(Collector::Kind::tcp, Protocol::tcp);
        sendOne(Collector::Kind::udp, Protocol::udp);
    };
    sendByBoth();
    const std::size_t before = support::openHandles();
    for (int i = 0; i < 10; ++i) {
        sendByBoth();
    }
    EXPECT_EQ(support::openHandles(), before);
}

} // namespace
