// SystemLog with a system's log that the test listens to, in mounts of its own.

#include <algorithm>
#include <chrono>
#include <optional>
#include <regex>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <unistd.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "FreshProcess.h"
#include "ListeningSocketLinux.h"
#include "linux/PrivateMounts.h"
#include "Property.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

constexpr const char* systemLog = "/dev/log";

void useADevFolderOfOnesOwn() {
    support::leaveTheMachinesMounts();
    support::mountMemory("/dev", "size=1m");
}

TEST(SystemLog, SendsPriorityTimeProgramAndMessageToTheSystemsSocket) {
    support::inFreshProcess([] {
        useADevFolderOfOnesOwn();
        const ListeningSocket log(systemLog);
        Logger::installBackend("SystemLog");
        Logger::getLogger("orders")->warning("stock is low: 100 % {}");
        const std::string packet = log.receive();
        // 12 is facility user, 1 * 8, and severity warning, 4.
        const std::regex expected(R"(<12>[A-Z][a-z]{2} [ \d]\d \d\d:\d\d:\d\d zol_system_log_)"
                                  R"(tests\[)" +
                                  std::to_string(getpid()) +
                                  R"(\]: WARNING \[orders\] stock is low: 100 % \{\})");
        EXPECT_TRUE(std::regex_match(packet, expected)) << packet;
    });
}

TEST(SystemLog, HasAPriorityForEachLevelInTheFacilityAskedFor) {
    support::inFreshProcess([] {
        useADevFolderOfOnesOwn();
        setProperty("SystemLog.facility", "local0"); // 16 * 8
        setProperty("SystemLog.source", "shop");
        const ListeningSocket log(systemLog);
        Logger::installBackend("SystemLog");
        Logger* const logger = Logger::getLogger("orders");
        const auto priorityOf = [&](LoggingLevel level) {
            logger->log(level) << "x";
            const std::string packet = log.receive();
            EXPECT_NE(packet.find(" shop["), std::string::npos) << packet;
            return packet.substr(0, packet.find('>') + 1);
        };
        EXPECT_EQ(priorityOf(LOG_LEVEL_FATAL), "<130>");
        EXPECT_EQ(priorityOf(LOG_LEVEL_ERROR), "<131>");
        EXPECT_EQ(priorityOf(LOG_LEVEL_WARNING), "<132>");
        EXPECT_EQ(priorityOf(LOG_LEVEL_INFO), "<134>");
        EXPECT_EQ(priorityOf(LOG_LEVEL_DEBUG), "<135>");
        EXPECT_EQ(priorityOf(LOG_LEVEL_TRACE), "<135>");
    });
}

TEST(SystemLog, LosesMessagesWhileThereIsNoLogAndSaysHowMany) {
    support::inFreshProcess([] {
        testing::internal::CaptureStderr(); // before the mount: it needs a folder for its file
        useADevFolderOfOnesOwn();
        ASSERT_NE(Logger::installBackend("SystemLog"), nullptr);
        for (int i = 0; i < 10; ++i) {
            EXPECT_NO_THROW(Logger::getLogger("orders")->info("lost"));
        }
        const ListeningSocket log(systemLog);
        std::this_thread::sleep_for(std::chrono::milliseconds(1000));
        Logger::getLogger("orders")->info("out");
        EXPECT_NE(log.receive().find("out"), std::string::npos);
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "ZOL back end SystemLog: messages are being lost: /dev/log: No such file or "
                  "directory\n"
                  "ZOL back end SystemLog: works again, lost messages: 10\n");
    });
}

TEST(SystemLog, LosesNothingOfABurstThatIsFasterThanTheLog) {
    support::inFreshProcess([] {
        testing::internal::CaptureStderr();
        useADevFolderOfOnesOwn();
        const ListeningSocket log(systemLog);
        Logger::installBackend("SystemLog");
        constexpr int messages = 1000;
        std::thread reader([&log] {
            for (int i = 0; i < messages; ++i) {
                const std::string end = " INFO [orders] " + std::to_string(i);
                const std::string packet = log.receive();
                EXPECT_EQ(packet.substr(packet.size() - std::min(packet.size(), end.size())), end);
            }
        });
        for (int i = 0; i < messages; ++i) {
            Logger::getLogger("orders")->info() << i;
        }
        reader.join();
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    });
}

TEST(SystemLog, CutsAMessageThatIsTooLongForAPacketAndGoesOn) {
    support::inFreshProcess([] {
        useADevFolderOfOnesOwn();
        const ListeningSocket log(systemLog);
        Logger::installBackend("SystemLog");
        Logger::getLogger("orders")->info() << std::string(1000000, 'x');
        Logger::getLogger("orders")->info("short");
        const std::string cut = log.receive();
        EXPECT_EQ(cut.size() - cut.find("INFO"), 60000U);
        EXPECT_EQ(cut.substr(cut.size() - 6), "xxx...");
        EXPECT_NE(log.receive().find("short"), std::string::npos);
    });
}

TEST(SystemLog, WaitsOnlyAMomentForALogThatTakesNothing) {
    support::inFreshProcess([] {
        testing::internal::CaptureStderr();
        useADevFolderOfOnesOwn();
        const ListeningSocket stuck(systemLog);
        Logger::installBackend("SystemLog");
        const auto begin = std::chrono::steady_clock::now();
        for (int i = 0; i < 10000; ++i) {
            Logger::getLogger("orders")->info("more than it has room for");
        }
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
        const std::string told = testing::internal::GetCapturedStderr();
        EXPECT_NE(told.find("messages are being lost: /dev/log"), std::string::npos) << told;
    });
}

} // namespace
