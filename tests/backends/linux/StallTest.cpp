// How long a statement waits for a partner that does not answer. Each test prints a row of the
// table in back-ends.md: zol_stall_tests | grep '^|'

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <unistd.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "Collector.h"
#include "FreshFolder.h"
#include "ListeningSocket.h"
#include "Property.h"
#include "linux/PrivateMounts.h"

using namespace ZOL::Framework::GenericLogger;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

namespace {

constexpr std::size_t moreThanBuffersHold = std::size_t{32} * 1024 * 1024;

/// The longest of some statements, in milliseconds.
template <class Statement>
long long longestOf(int statements, Statement statement) {
    Clock::duration longest = 0s;
    for (int i = 0; i < statements; ++i) {
        const auto begin = Clock::now();
        statement();
        longest = std::max(longest, Clock::now() - begin);
    }
    return std::chrono::duration_cast<std::chrono::milliseconds>(longest).count();
}

void logText(const std::string& text) {
    Logger::getLogger("orders")->info() << text;
}

/// Prints a row, which the document has with a figure of its own.
void printRow(const char* backend, const char* situation, const std::string& timeout,
              long long measured) {
    const std::string row =
        std::string("| `") + backend + "` | " + situation + " | " + timeout + " | ";
    std::printf("%s%g s |\n", row.c_str(), static_cast<double>(measured) / 1000);
    std::fflush(stdout);
    EXPECT_NE(textOf(DOCUMENT).find("\n" + row), std::string::npos) << "not in " DOCUMENT;
}

/// Prints the row of a back end, and expects that its timeout holds, with a reserve.
void report(const char* backend, const char* situation, std::chrono::milliseconds timeout,
            long long measured) {
    char seconds[32] = "does not wait";
    if (timeout > 0ms) {
        std::snprintf(seconds, sizeof(seconds), "%g s",
                      static_cast<double>(timeout.count()) / 1000);
    }
    printRow(backend, situation, seconds, measured);
    EXPECT_LT(measured, 4 * timeout.count() + 1000);
}

void installNetwork(const std::string& host, int port) {
    setProperty("Network.host", host);
    setProperty("Network.port", std::to_string(port));
    ASSERT_NE(Logger::installBackend("Network"), nullptr);
}

TEST(Stall, NetworkCollectorIsDown) {
    inFreshFolder([] {
        installNetwork("127.0.0.1", Collector(Collector::Kind::tcp).port());
        report("Network", "the host refuses the connection", 0ms,
               longestOf(1000, [] { logText("x"); }));
    });
}

TEST(Stall, NetworkCollectorDoesNotAccept) {
    inFreshFolder([] {
        const Collector unresponsive(Collector::Kind::unresponsive);
        installNetwork("127.0.0.1", unresponsive.port());
        report("Network", "the host does not answer, or the collector accepts no connection", 1s,
               longestOf(1000, [] { logText("x"); }));
    });
}

TEST(Stall, NetworkFirstAddressIsDead) {
    inFreshFolder([] {
        support::leaveTheMachinesMounts();
        std::ofstream("hosts") << "127.0.0.1 collector.example\n127.0.0.2 collector.example\n";
        support::mountFile("hosts", "/etc/hosts");
        const Collector dead(Collector::Kind::unresponsive, 0, "127.0.0.1"); // is tried first
        const Collector alive(Collector::Kind::tcp, dead.port(), "127.0.0.2");
        installNetwork("collector.example", dead.port());
        report("Network", "the first of two addresses of the host does not answer", 500ms,
               longestOf(1000, [] { logText("x"); }));
    });
}

TEST(Stall, NetworkCollectorDoesNotRead) {
    inFreshFolder([] {
        Collector collector(Collector::Kind::tcp);
        installNetwork("127.0.0.1", collector.port());
        logText("x");
        collector.accept();
        const std::string large(std::size_t{1024} * 1024, 'x');
        report("Network", "the collector does not read", 1s,
               longestOf(40, [&] { logText(large); }));
    });
}

TEST(Stall, NetworkCollectorReadsSlowly) {
    inFreshFolder([] {
        Collector collector(Collector::Kind::tcp);
        installNetwork("127.0.0.1", collector.port());
        logText("x");
        collector.accept();
        std::thread reader([&collector] {
            for (int i = 0; i < 300 && !collector.read(std::size_t{64} * 1024).empty(); ++i) {
                std::this_thread::sleep_for(10ms);
            }
        });
        const std::string large(moreThanBuffersHold, 'x');
        report("Network", "the collector reads a long message slowly", 1s,
               longestOf(1, [&] { logText(large); }));
        reader.join();
    });
}

TEST(Stall, NetworkCollectorIsReplacedByOneThatDoesNotAccept) {
    inFreshFolder([] {
        std::optional<Collector> collector(std::in_place, Collector::Kind::tcp);
        const int port = collector->port();
        installNetwork("127.0.0.1", port);
        logText("x");
        collector->accept();
        std::this_thread::sleep_for(5s); // the retry interval
        collector.reset();
        const Collector unresponsive(Collector::Kind::unresponsive, port);
        std::this_thread::sleep_for(100ms);
        report("Network", "the connection is closed, and the collector does not accept another", 1s,
               longestOf(1000, [] { logText("x"); }));
    });
}

TEST(Stall, NetworkNameServerDoesNotAnswer) {
    inFreshFolder([] {
        constexpr int nameServerPort = 53;
        support::leaveTheMachinesMounts();
        const Collector silent(Collector::Kind::udp, nameServerPort, "127.0.0.53");
        std::ofstream("resolv.conf") << "nameserver 127.0.0.53\n";
        support::mountFile("resolv.conf", "/etc/resolv.conf");
        installNetwork("collector.example", 5170);
        // The timeout is the system's: two attempts of five seconds.
        report("Network", "the name server does not answer", 10s,
               longestOf(1000, [] { logText("x"); }));
    });
}

TEST(Stall, SystemLogIsNotRead) {
    inFreshFolder([] {
        support::leaveTheMachinesMounts();
        support::mountMemory("/dev", "size=1m");
        const ListeningSocket stuck("/dev/log");
        Logger::installBackend("SystemLog");
        report("SystemLog", "the log service does not read", 100ms,
               longestOf(10000, [] { logText("x"); }));
    });
}

TEST(Stall, SystemLogIsAStreamThatIsNotRead) {
    inFreshFolder([] {
        support::leaveTheMachinesMounts();
        support::mountMemory("/dev", "size=1m");
        const ListeningSocket stuck("/dev/log", ListeningSocket::Type::stream);
        Logger::installBackend("SystemLog");
        report("SystemLog", "the log service does not read its stream socket", 100ms,
               longestOf(10000, [] { logText("x"); }));
    });
}

TEST(Stall, JournalIsNotRead) {
    inFreshFolder([] {
        support::leaveTheMachinesMounts();
        support::mountMemory("/run", "size=1m");
        std::filesystem::create_directories("/run/systemd/journal");
        const ListeningSocket stuck("/run/systemd/journal/socket");
        Logger::installBackend("DebugOutput");
        report("DebugOutput", "the journal does not read", 100ms,
               longestOf(10000, [] { logText("x"); }));
    });
}

TEST(Stall, ConsoleIsNotReadForSomeTime) {
    inFreshFolder([] {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        const int before = dup(STDERR_FILENO);
        dup2(ends[1], STDERR_FILENO);
        Logger::installBackend("Console");
        constexpr int messages = 10000; // more than the pipe holds
        std::thread reader([&ends] {
            std::this_thread::sleep_for(2s);
            char text[4096];
            while (read(ends[0], text, sizeof(text)) > 0) {
            }
        });
        const long long longest = longestOf(messages, [] { logText("a line of text"); });
        dup2(before, STDERR_FILENO);
        close(ends[1]);
        reader.join();
        printRow("Console", "standard error is a pipe that is read only after 2 s",
                 "none, until it is read", longest);
        EXPECT_GT(longest, 1000);
    });
}

void reportFullDisk(const char* backend) {
    std::filesystem::create_directory("disk");
    support::leaveTheMachinesMounts();
    support::mountMemory("disk", "size=64k");
    setProperty(std::string(backend) + ".path", "disk/zol.log");
    Logger::installBackend(backend);
    report(backend, "the disk is full", 0ms, longestOf(10000, [] { logText("a line of text"); }));
}

TEST(Stall, RotatingFileOnAFullDisk) {
    inFreshFolder([] { reportFullDisk("RotatingFile"); });
}

TEST(Stall, DailyFileOnAFullDisk) {
    inFreshFolder([] { reportFullDisk("DailyFile"); });
}

} // namespace
