// The Network back end and a host with several addresses, in a private mount namespace.

#include <chrono>
#include <fstream>
#include <string>
#include <vector>

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netdb.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "Collector.h"
#include "FreshFolder.h"
#include "Property.h"
#include "linux/PrivateMounts.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

constexpr const char* host = "collector.example";
constexpr auto timeout = std::chrono::seconds(1);

/// Gives the host addresses, and returns them in the order in which they are tried.
std::vector<std::string> hostWithAddresses(int count) {
    support::leaveTheMachinesMounts();
    std::ofstream hosts("hosts");
    for (int i = 1; i <= count; ++i) {
        hosts << "127.0.0." << i << ' ' << host << '\n';
    }
    hosts.close();
    support::mountFile("hosts", "/etc/hosts");
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    EXPECT_EQ(getaddrinfo(host, nullptr, &hints, &found), 0);
    std::vector<std::string> addresses;
    for (const addrinfo* address = found; address != nullptr; address = address->ai_next) {
        char text[INET_ADDRSTRLEN];
        inet_ntop(AF_INET, &reinterpret_cast<const sockaddr_in*>(address->ai_addr)->sin_addr, text,
                  sizeof(text));
        addresses.emplace_back(text);
    }
    freeaddrinfo(found);
    return addresses;
}

void installFor(int port) {
    setProperty("Network.host", host);
    setProperty("Network.port", std::to_string(port));
    setProperty("Network.pattern", "%v");
    ASSERT_NE(Logger::installBackend("Network"), nullptr);
}

TEST(HostAddresses, AreTriedAfterOthersThatDoNotAnswerOrRefuse) {
    inFreshFolder([] {
        const std::vector<std::string> addresses = hostWithAddresses(10);
        ASSERT_EQ(addresses.size(), 10U);
        const Collector dead(Collector::Kind::unresponsive, 0, addresses.front().c_str());
        Collector collector(Collector::Kind::tcp, dead.port(), addresses.back().c_str());
        installFor(dead.port());
        const auto begin = std::chrono::steady_clock::now();
        Logger::getLogger("orders")->info("first");
        EXPECT_LT(std::chrono::steady_clock::now() - begin, timeout) << "a tenth is for the first";
        Logger::getLogger("orders")->info("second");
        EXPECT_EQ(collector.receive("second\n"), "INFO [orders] first\nINFO [orders] second\n");
    });
}

TEST(HostAddresses, ShareOneTimeoutIfNoneAnswers) {
    inFreshFolder([] {
        const std::vector<std::string> addresses = hostWithAddresses(2);
        ASSERT_EQ(addresses.size(), 2U);
        const Collector dead(Collector::Kind::unresponsive, 0, addresses[0].c_str());
        const Collector deadToo(Collector::Kind::unresponsive, dead.port(), addresses[1].c_str());
        installFor(dead.port());
        testing::internal::CaptureStderr();
        const auto begin = std::chrono::steady_clock::now();
        Logger::getLogger("orders")->info("dropped");
        const auto duration = std::chrono::steady_clock::now() - begin;
        EXPECT_GE(duration, timeout - std::chrono::milliseconds(1));
        EXPECT_LT(duration, 3 * timeout);
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "ZOL back end Network: messages are being lost: no connection to " +
                      std::string(host) + " port " + std::to_string(dead.port()) + ": no answer\n");
    });
}

TEST(HostAddresses, AreMissingForAReasonThatIsReported) {
    inFreshFolder([] {
        testing::internal::CaptureStderr();
        setProperty("Network.host", "::1%no-such-interface");
        Logger::installBackend("Network");
        Logger::getLogger("orders")->info("dropped");
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "ZOL back end Network: messages are being lost: there is no address for the host "
                  "::1%no-such-interface: Name or service not known\n");
    });
}

} // namespace
