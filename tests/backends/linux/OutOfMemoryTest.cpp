// The ready-made back ends with failing allocations: no exception, and every message is written or
// counted as dropped. The program's operator new replaces that of the plug-ins, which is not
// possible on Windows.

#include <filesystem>
#include <functional>
#include <future>
#include <regex>
#include <string>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "ZOL/Framework/GenericLogger/LoggingChannel.h"

#include "Collector.h"
#include "FailingAllocator.h"
#include "FreshFolder.h"
#include "FreshProcess.h"
#include "ListeningSocket.h"
#include "OutOfMemory.h"
#include "Property.h"
#include "linux/PrivateMounts.h"

using namespace ZOL::Framework::GenericLogger;
namespace fs = std::filesystem;

namespace {

constexpr const char* message = "stock is low";
constexpr const char* line = "INFO [orders] stock is low";

/// How often the piece occurs in the text.
int count(const std::string& text, const std::string& piece) {
    int found = 0;
    for (std::size_t at = text.find(piece); at != std::string::npos;
         at = text.find(piece, at + 1)) {
        ++found;
    }
    return found;
}

/// The sum of all reported drops.
int dropsIn(const std::string& report) {
    static const std::regex number("lost messages: ([0-9]+)");
    int sum = 0;
    for (std::sregex_iterator found(report.begin(), report.end(), number), end; found != end;
         ++found) {
        sum += std::stoi((*found)[1]);
    }
    return sum;
}

class BackendOutOfMemory : public support::OutOfMemory {
protected:
    /// Logs until no allocation of a message fails, with a closed sink at first and then with an
    /// open one, and one more message for the report of the drops. Returns the number of messages.
    int logWithFailures(LoggingChannel& channel) const {
        const Action log = [&channel] {
            channel.log(LOG_LEVEL_INFO, message);
        };
        int messages = 0;
        std::size_t attempts = 0;
        for (int round = 0; round < 2; ++round) {
            for (std::size_t n = 1;; ++n) {
                const Outcome outcome = attempt(n, log);
                EXPECT_FALSE(outcome.threwBadAlloc) << "at allocation " << n;
                ++messages;
                if (!outcome.failed) {
                    attempts += n - 1;
                    break;
                }
            }
        }
        EXPECT_GT(attempts, 0U) << "no allocation was reached";
        log();
        return messages + 1;
    }

    static LoggingChannel& install(const std::string& backend) {
        setProperty(backend + ".pattern", "%v");
        return *Logger::installBackend(backend.c_str())->createChannel("orders");
    }
};

TEST_P(BackendOutOfMemory, ConsoleWritesOrCountsEachMessage) {
    support::inFreshProcess([this] {
        LoggingChannel& console = install("Console");
        testing::internal::CaptureStderr();
        const int messages = logWithFailures(console);
        const std::string text = testing::internal::GetCapturedStderr();
        EXPECT_EQ(count(text, line) + dropsIn(text), messages) << text;
    });
}

void expectFilesToContain(int messages, const std::string& report) {
    int written = 0;
    for (const auto& file : fs::directory_iterator(".")) {
        written += count(textOf(file.path()), line);
    }
    EXPECT_EQ(written + dropsIn(report), messages) << report;
}

TEST_P(BackendOutOfMemory, RotatingFileWritesOrCountsEachMessage) {
    inFreshFolder([this] {
        setProperty("RotatingFile.size", "30"); // a file for each message
        setProperty("RotatingFile.count", "900");
        LoggingChannel& file = install("RotatingFile");
        testing::internal::CaptureStderr();
        const int messages = logWithFailures(file);
        expectFilesToContain(messages, testing::internal::GetCapturedStderr());
    });
}

TEST_P(BackendOutOfMemory, DailyFileWritesOrCountsEachMessage) {
    inFreshFolder([this] {
        LoggingChannel& file = install("DailyFile");
        testing::internal::CaptureStderr();
        const int messages = logWithFailures(file);
        expectFilesToContain(messages, testing::internal::GetCapturedStderr());
    });
}

TEST_P(BackendOutOfMemory, NetworkSendsOrCountsEachMessage) {
    support::inFreshProcess([this] {
        Collector collector(Collector::Kind::udp);
        setProperty("Network.protocol", "udp");
        setProperty("Network.port", std::to_string(collector.port()));
        LoggingChannel& network = install("Network");
        testing::internal::CaptureStderr();
        const int messages = logWithFailures(network);
        network.log(LOG_LEVEL_INFO, "end");
        std::string received;
        while (received.find("end\n") == std::string::npos) {
            const std::string packet = collector.receive("\n");
            ASSERT_NE(packet, "") << "the last message has not arrived";
            received += packet;
        }
        const std::string report = testing::internal::GetCapturedStderr();
        EXPECT_EQ(count(received, line) + dropsIn(report), messages) << report;
    });
}

/// For the back ends that send to a log socket of this machine.
void expectSocketToReceive(const ListeningSocket& socket, const std::function<int()>& log) {
    auto received = std::async(std::launch::async, [&socket] {
        int packets = 0;
        for (std::string packet; packet.find("end of the test") == std::string::npos; ++packets) {
            packet = socket.receive();
            if (packet.empty()) {
                return -1;
            }
        }
        return packets - 1;
    });
    testing::internal::CaptureStderr();
    const int messages = log();
    const std::string report = testing::internal::GetCapturedStderr();
    EXPECT_EQ(received.get() + dropsIn(report), messages) << report;
}

TEST_P(BackendOutOfMemory, SystemLogSendsOrCountsEachMessage) {
    support::inFreshProcess([this] {
        support::leaveTheMachinesMounts();
        support::mountMemory("/dev", "size=1m");
        const ListeningSocket socket("/dev/log");
        LoggingChannel& log = install("SystemLog");
        expectSocketToReceive(socket, [this, &log] {
            const int messages = logWithFailures(log);
            log.log(LOG_LEVEL_INFO, "end of the test");
            return messages;
        });
    });
}

TEST_P(BackendOutOfMemory, DebugOutputSendsOrCountsEachMessage) {
    support::inFreshProcess([this] {
        support::leaveTheMachinesMounts();
        support::mountMemory("/run", "size=1m");
        fs::create_directories("/run/systemd/journal");
        const ListeningSocket socket("/run/systemd/journal/socket");
        LoggingChannel& journal = install("DebugOutput");
        expectSocketToReceive(socket, [this, &journal] {
            const int messages = logWithFailures(journal);
            journal.log(LOG_LEVEL_INFO, "end of the test");
            return messages;
        });
    });
}

ZOL_INSTANTIATE_OUT_OF_MEMORY(BackendOutOfMemory);

} // namespace
