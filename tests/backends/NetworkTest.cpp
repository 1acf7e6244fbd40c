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

using namespace ZOL::Framework::GenericLogger;
using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

namespace {

constexpr auto pauseBetweenAttempts = 5000ms;
constexpr auto bound = 3s; // what no message may cost, with a slow machine's time added

void installFor(const Collector& collector) {
    setProperty("Network.port", std::to_string(collector.port()));
    setProperty("Network.pattern", "%v");
    ASSERT_NE(Logger::installBackend("Network"), nullptr);
}

Clock::duration timeOf(const std::string& text) {
    const auto begin = Clock::now();
    EXPECT_NO_THROW(Logger::getLogger("orders")->info() << text);
    return Clock::now() - begin;
}

TEST(Network, SendsALineForEachMessageByTcp) {
    support::inFreshProcess([] {
        Collector collector(Collector::Kind::tcp);
        installFor(collector);
        timeOf("first");
        timeOf("second");
        EXPECT_EQ(collector.receive("second\n"), "INFO [orders] first\nINFO [orders] second\n");
    });
}

TEST(Network, SendsAPacketForEachMessageByUdp) {
    support::inFreshProcess([] {
        Collector collector(Collector::Kind::udp);
        setProperty("Network.protocol", "UDP");
        setProperty("Network.host", "localhost");
        installFor(collector);
        timeOf("first");
        EXPECT_EQ(collector.receive("first\n"), "INFO [orders] first\n");
        timeOf("second");
        EXPECT_EQ(collector.receive("second\n"), "INFO [orders] second\n");
    });
}

TEST(Network, CutsAMessageThatIsTooLongForAPacketAndGoesOn) {
    support::inFreshProcess([] {
        Collector collector(Collector::Kind::udp);
        setProperty("Network.protocol", "udp");
        installFor(collector);
        timeOf(std::string(1000000, 'x'));
        const std::string cut = collector.receive("...\n");
        EXPECT_EQ(cut.size(), 60001U) << "with the line feed";
        EXPECT_EQ(cut.substr(0, 17), "INFO [orders] xxx");
        timeOf("short");
        EXPECT_EQ(collector.receive("short\n"), "INFO [orders] short\n");
    });
}

TEST(Network, SendsALongMessageWholeByTcp) {
    support::inFreshProcess([] {
        Collector collector(Collector::Kind::tcp);
        installFor(collector);
        const std::string text(100000, 'x');
        timeOf(text + "!");
        EXPECT_TRUE(collector.receive("!\n") == "INFO [orders] " + text + "!\n");
    });
}

TEST(Network, LosesMessagesWhileTheCollectorIsAwayAndSaysHowMany) {
    support::inFreshProcess([] {
        std::optional<Collector> collector(std::in_place, Collector::Kind::tcp);
        const int port = collector->port();
        installFor(*collector);
        timeOf("out");
        EXPECT_EQ(collector->receive("out\n"), "INFO [orders] out\n");
        testing::internal::CaptureStderr();
        collector.reset();
        std::this_thread::sleep_for(100ms); // the farewell travels
        for (int i = 0; i < 100; ++i) {
            EXPECT_LT(timeOf("lost"), bound);
        }
        collector.emplace(Collector::Kind::tcp, port);
        std::this_thread::sleep_for(pauseBetweenAttempts);
        timeOf("again");
        EXPECT_EQ(collector->receive("again\n"), "INFO [orders] again\n");
        const std::string told = testing::internal::GetCapturedStderr();
        EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 2) << told;
        EXPECT_EQ(told.find("ZOL back end Network: messages are being lost: the collector has "
                            "closed the connection"),
                  0U)
            << told;
        EXPECT_NE(told.find("Network: works again, lost messages: 100\n"), std::string::npos)
            << told;
    });
}

TEST(Network, ReachesACollectorThatWasRestartedWithoutALoss) {
    support::inFreshProcess([] {
        std::optional<Collector> collector(std::in_place, Collector::Kind::tcp);
        const int port = collector->port();
        installFor(*collector);
        timeOf("out");
        EXPECT_EQ(collector->receive("out\n"), "INFO [orders] out\n");
        std::this_thread::sleep_for(pauseBetweenAttempts);
        collector.reset();
        collector.emplace(Collector::Kind::tcp, port);
        std::this_thread::sleep_for(100ms);
        timeOf("again");
        EXPECT_EQ(collector->receive("again\n"), "INFO [orders] again\n");
    });
}

TEST(Network, CostsLittleWhereNobodyListens) {
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
            timeOf("lost");
        }
        EXPECT_LT(Clock::now() - begin, bound);
        const std::string told = testing::internal::GetCapturedStderr();
        EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 1) << told;
        EXPECT_NE(told.find("messages are being lost: no connection to 127.0.0.1 port " +
                            std::to_string(port)),
                  std::string::npos)
            << told;
    });
}

TEST(Network, CountsAtTheEndOfTheProcessWhatWasLostUntilThen) {
    EXPECT_EXIT(
        {
            {
                const Collector gone(Collector::Kind::tcp);
                installFor(gone);
            }
            timeOf("lost");
            timeOf("lost");
            std::exit(0);
        },
        testing::ExitedWithCode(0), "Network: the process ends, lost messages: 2\n");
}

TEST(Network, WaitsOnlyAWhileForAHostThatDoesNotAnswer) {
    support::inFreshProcess([] {
        const Collector deaf(Collector::Kind::deaf);
        installFor(deaf);
        testing::internal::CaptureStderr();
        EXPECT_LT(timeOf("lost"), bound);
        EXPECT_LT(timeOf("lost as well, without an attempt"), 500ms);
        const std::string told = testing::internal::GetCapturedStderr();
        EXPECT_NE(told.find(": no answer\n"), std::string::npos) << told;
    });
}

TEST(Network, WaitsOnlyAWhileForACollectorThatDoesNotRead) {
    support::inFreshProcess([] {
        Collector collector(Collector::Kind::tcp);
        installFor(collector);
        testing::internal::CaptureStderr();
        timeOf("first");
        collector.accept();
        const std::string large(std::size_t{1024} * 1024, 'x');
        Clock::duration longest = 0s;
        for (int i = 0; i < 30; ++i) { // more than the system keeps for both of them
            longest = std::max(longest, timeOf(large));
        }
        EXPECT_LT(longest, bound);
        const std::string told = testing::internal::GetCapturedStderr();
        // A slow machine gets to the next attempt, which succeeds, before it has written them all.
        const std::string loss =
            "ZOL back end Network: messages are being lost: the collector takes "
            "no more messages\n";
        EXPECT_EQ(told.substr(0, loss.size()), loss);
    });
}

TEST(Network, TellsOfBadSettingsAndUsesTheDefaults) {
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
