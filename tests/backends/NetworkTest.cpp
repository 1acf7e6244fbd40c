#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <optional>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "Collector.h"
#include "FreshProcess.h"
#include "Property.h"
#include "TextShape.h"

using namespace ZOL::Framework::GenericLogger;
using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

namespace {

constexpr auto retryInterval = 5000ms;
constexpr auto maxDuration = 3s; // of one message: the timeout, and reserve for a slow machine

void installFor(const Collector& collector) {
    setProperty("Network.port", std::to_string(collector.port()));
    setProperty("Network.pattern", "%v");
    ASSERT_NE(Logger::installBackend("Network"), nullptr);
}

Clock::duration timeToLog(const std::string& text) {
    const auto begin = Clock::now();
    EXPECT_NO_THROW(Logger::getLogger("orders")->info() << text);
    return Clock::now() - begin;
}

TEST(Network, SendsALineForEachMessageByTcp) {
    support::inFreshProcess([] {
        Collector collector(Collector::Kind::tcp);
        installFor(collector);
        timeToLog("first");
        timeToLog("second");
        EXPECT_EQ(collector.receive("second\n"), "INFO [orders] first\nINFO [orders] second\n");
    });
}

TEST(Network, SendsAPacketForEachMessageByUdp) {
    support::inFreshProcess([] {
        Collector collector(Collector::Kind::udp);
        setProperty("Network.protocol", "UDP");
        installFor(collector);
        timeToLog("first");
        EXPECT_EQ(collector.receive("first\n"), "INFO [orders] first\n");
        timeToLog("second");
        EXPECT_EQ(collector.receive("second\n"), "INFO [orders] second\n");
    });
}

TEST(Network, TruncatesAMessageThatIsTooLongForAPacket) {
    support::inFreshProcess([] {
        Collector collector(Collector::Kind::udp);
        setProperty("Network.protocol", "udp");
        installFor(collector);
        timeToLog(std::string(1000000, 'x'));
        const std::string truncated = collector.receive("...\n");
        EXPECT_EQ(truncated.size(), 60001U) << "with the line feed";
        EXPECT_EQ(truncated.substr(0, 17), "INFO [orders] xxx");
        timeToLog("short");
        EXPECT_EQ(collector.receive("short\n"), "INFO [orders] short\n");
    });
}

TEST(Network, SendsALongMessageUnchangedByTcp) {
    support::inFreshProcess([] {
        Collector collector(Collector::Kind::tcp);
        installFor(collector);
        const std::string text(100000, 'x');
        timeToLog(text + "!");
        EXPECT_TRUE(collector.receive("!\n") == "INFO [orders] " + text + "!\n");
    });
}

TEST(Network, CountsMessagesDroppedWhileTheCollectorIsAway) {
    support::inFreshProcess([] {
        std::optional<Collector> collector(std::in_place, Collector::Kind::tcp);
        const int port = collector->port();
        installFor(*collector);
        const auto retryAt = Clock::now() + retryInterval; // at the earliest
        timeToLog("written");
        EXPECT_EQ(collector->receive("written\n"), "INFO [orders] written\n");
        testing::internal::CaptureStderr();
        collector.reset();
        std::this_thread::sleep_for(100ms); // until the end of the connection has arrived
        for (int i = 0; i < 100; ++i) {
            EXPECT_LT(timeToLog("dropped"), maxDuration);
        }
        collector.emplace(Collector::Kind::tcp, port);
        std::this_thread::sleep_until(retryAt - 1s);
        timeToLog("dropped");
        const bool isInTime = Clock::now() < retryAt; // a busy machine may oversleep
        std::this_thread::sleep_until(retryAt + 1s);  // the interval began when it had connected
        timeToLog("again");
        const std::string received = collector->receive("again\n");
        if (isInTime) {
            EXPECT_EQ(received, "INFO [orders] again\n") << "no attempt in the retry interval";
        }
        const std::string report = testing::internal::GetCapturedStderr();
        EXPECT_EQ(std::count(report.begin(), report.end(), '\n'), 2) << report;
        EXPECT_EQ(report.find("ZOL back end Network: messages are being lost: the collector has "
                              "closed the connection"),
                  0U)
            << report;
        if (isInTime) {
            EXPECT_NE(report.find("Network: works again, lost messages: 101\n"), std::string::npos)
                << report;
        }
    });
}

TEST(Network, DropsNothingIfTheCollectorIsRestarted) {
    support::inFreshProcess([] {
        std::optional<Collector> collector(std::in_place, Collector::Kind::tcp);
        const int port = collector->port();
        installFor(*collector);
        timeToLog("first");
        collector->send("welcome\n"); // what it has sent precedes the end of the connection
        EXPECT_EQ(collector->receive("first\n"), "INFO [orders] first\n");
        std::this_thread::sleep_for(retryInterval);
        collector->send("goodbye\n");
        collector.reset();
        collector.emplace(Collector::Kind::tcp, port);
        std::this_thread::sleep_for(100ms);
        timeToLog("second");
        EXPECT_EQ(collector->receive("second\n"), "INFO [orders] second\n");
    });
}

TEST(Network, ReturnsQuicklyIfThePortIsClosed) {
    support::inFreshProcess([] {
        int port = 0;
        {
            const Collector gone(Collector::Kind::tcp);
            installFor(gone);
            port = gone.port();
        }
        testing::internal::CaptureStderr();
        const auto begin = Clock::now();
        for (int i = 0; i < 100; ++i) {
            timeToLog("dropped");
        }
        EXPECT_LT(Clock::now() - begin, maxDuration);
        const std::string report = testing::internal::GetCapturedStderr();
        EXPECT_EQ(std::count(report.begin(), report.end(), '\n'), 1) << report;
        EXPECT_NE(report.find("messages are being lost: no connection to 127.0.0.1 port " +
                              std::to_string(port)),
                  std::string::npos)
            << report;
    });
}

TEST(Network, ReportsDroppedMessagesAtTheEndOfTheProcess) {
    EXPECT_EXIT(
        {
            {
                const Collector gone(Collector::Kind::tcp);
                installFor(gone);
            }
            timeToLog("dropped");
            timeToLog("dropped");
            std::exit(0);
        },
        testing::ExitedWithCode(0), "Network: the process ends, lost messages: 2\n");
}

TEST(Network, TimesOutIfTheHostDoesNotAnswer) {
    support::inFreshProcess([] {
        const Collector unresponsive(Collector::Kind::unresponsive);
        installFor(unresponsive);
        testing::internal::CaptureStderr();
        EXPECT_LT(timeToLog("dropped"), maxDuration);
        EXPECT_LT(timeToLog("dropped without an attempt"), 500ms);
        const std::string report = testing::internal::GetCapturedStderr();
        EXPECT_NE(report.find(": no answer\n"), std::string::npos) << report;
    });
}

TEST(Network, TimesOutIfTheCollectorDoesNotRead) {
    support::inFreshProcess([] {
        Collector collector(Collector::Kind::tcp);
        installFor(collector);
        testing::internal::CaptureStderr();
        timeToLog("first");
        collector.accept();
        const std::string large(std::size_t{1024} * 1024, 'x');
        Clock::duration longest = 0s;
        for (int i = 0; i < 30; ++i) { // more than the buffers of both sockets hold
            longest = std::max(longest, timeToLog(large));
        }
        EXPECT_LT(longest, maxDuration);
        const std::string report = testing::internal::GetCapturedStderr();
        // A slow machine may reach the next attempt, which succeeds, before all are sent.
        const std::string expected =
            "ZOL back end Network: messages are being lost: the collector takes "
            "no more messages\n";
        EXPECT_EQ(report.substr(0, expected.size()), expected);
    });
}

TEST(Network, SendsALineForSyslogCollectorsByDefault) {
    support::inFreshProcess([] {
        Collector collector(Collector::Kind::tcp);
        setProperty("Network.port", std::to_string(collector.port()));
        ASSERT_NE(Logger::installBackend("Network"), nullptr);
        Logger::getLogger("orders")->warning("stock is low");
        const std::string line = collector.receive("\n");
        const std::string begin = "<00>0000-00-00T00:00:00.000";
        const std::string end = "]: WARNING [orders] stock is low\n";
        ASSERT_GT(line.size(), begin.size() + end.size());
        EXPECT_TRUE(hasShape(line.substr(0, begin.size()), begin)) << line;
        EXPECT_EQ(line.substr(0, 4), "<12>");
        EXPECT_EQ(line.substr(line.size() - end.size()), end);
    });
}

TEST(Network, ReportsInvalidSettingsAndUsesTheFallbacks) {
    support::inFreshProcess([] {
        setProperty("Network.port", "65536");
        setProperty("Network.protocol", "sctp");
        testing::internal::CaptureStderr();
        EXPECT_NE(Logger::installBackend("Network"), nullptr);
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "ZOL back end Network: the property Network.port is \"65536\" and not a number "
                  "from 1 to 65535; using 5170\n"
                  "ZOL back end Network: the property Network.protocol is \"sctp\" and not one of "
                  "tcp, udp; using tcp\n");
    });
}

} // namespace
