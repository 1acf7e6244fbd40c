// The DebugOutput back end with a journal socket of the test's own, in a private mount namespace.

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "FreshProcess.h"
#include "ListeningSocket.h"
#include "linux/PrivateMounts.h"

using namespace ZOL::Framework::GenericLogger;
using namespace std::string_literals;

namespace {

constexpr const char* journal = "/run/systemd/journal/socket";

void mountPrivateRun() {
    support::leaveTheMachinesMounts();
    support::mountMemory("/run", "size=1m");
    std::filesystem::create_directories("/run/systemd/journal");
}

TEST(DebugOutput, SendsMessagePriorityProgramAndLoggerToTheJournal) {
    support::inFreshProcess([] {
        mountPrivateRun();
        const ListeningSocket listener(journal);
        Logger::installBackend("DebugOutput");
        Logger::getLogger("orders")->error("sold out");
        EXPECT_EQ(listener.receive(),
                  "MESSAGE\n\x17\0\0\0\0\0\0\0ERROR [orders] sold out\n"
                  "PRIORITY\n\1\0\0\0\0\0\0\0003\n"
                  "SYSLOG_IDENTIFIER\n\x16\0\0\0\0\0\0\0zol_debug_output_tests\n"
                  "ZOL_LOGGER\n\6\0\0\0\0\0\0\0orders\n"s);
    });
}

TEST(DebugOutput, SendsTheLengthOfALongMessage) {
    support::inFreshProcess([] {
        mountPrivateRun();
        const ListeningSocket listener(journal);
        Logger::installBackend("DebugOutput");
        const std::string level = "INFO [orders] ";
        const std::string text(0x81FE - level.size(), 'x');
        Logger::getLogger("orders")->info() << text;
        const std::string length = "\xFE\x81\0\0\0\0\0\0"s;
        const std::string message = "MESSAGE\n" + length + level + text + "\nPRIORITY\n";
        EXPECT_TRUE(listener.receive().substr(0, message.size()) == message);
    });
}

TEST(DebugOutput, TruncatesAMessageThatIsTooLongForAPacket) {
    support::inFreshProcess([] {
        mountPrivateRun();
        const ListeningSocket listener(journal);
        Logger::installBackend("DebugOutput");
        Logger::getLogger("orders")->info() << std::string(1000000, 'x');
        Logger::getLogger("orders")->info("short");
        EXPECT_NE(listener.receive().find("xxx...\nPRIORITY\n"), std::string::npos);
        EXPECT_NE(listener.receive().find("short"), std::string::npos);
    });
}

TEST(DebugOutput, CountsMessagesDroppedWhileThereIsNoJournal) {
    support::inFreshProcess([] {
        testing::internal::CaptureStderr();
        mountPrivateRun();
        ASSERT_NE(Logger::installBackend("DebugOutput"), nullptr);
        for (int i = 0; i < 10; ++i) {
            EXPECT_NO_THROW(Logger::getLogger("orders")->info("dropped"));
        }
        const ListeningSocket listener(journal);
        std::this_thread::sleep_for(std::chrono::milliseconds(1000));
        Logger::getLogger("orders")->info("written");
        EXPECT_NE(listener.receive().find("INFO [orders] written"), std::string::npos);
        const std::string report = testing::internal::GetCapturedStderr();
        EXPECT_EQ(report, "ZOL back end DebugOutput: messages are being lost: "
                          "/run/systemd/journal/socket: No such file or directory\n"
                          "ZOL back end DebugOutput: works again, lost messages: 10\n");
    });
}

} // namespace
