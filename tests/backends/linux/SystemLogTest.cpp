// The SystemLog back end with a /dev/log of the test's own, in a private mount namespace.

#include <algorithm>
#include <cctype>
#include <cerrno> // program_invocation_short_name
#include <chrono>
#include <string>
#include <thread>
#include <utility>

#include <gtest/gtest.h>
#include <unistd.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "FreshProcess.h"
#include "ListeningSocket.h"
#include "Property.h"
#include "TextShape.h"
#include "linux/PrivateMounts.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

constexpr const char* systemLog = "/dev/log";

void mountPrivateDev() {
    support::leaveTheMachinesMounts();
    support::mountMemory("/dev", "size=1m");
}

/// Whether the text is a time such as "Jan  1 00:00:00": the day is padded with a blank.
bool isTime(std::string text) {
    if (text[4] == ' ') {
        text[4] = '0';
    }
    return std::isupper(text[0]) != 0 && std::islower(text[1]) != 0 && std::islower(text[2]) != 0 &&
           hasShape(text.substr(3), " 00 00:00:00");
}

TEST(SystemLog, SendsPriorityTimeProgramAndMessageToDevLog) {
    support::inFreshProcess([] {
        mountPrivateDev();
        const ListeningSocket log(systemLog);
        Logger::installBackend("SystemLog");
        Logger::getLogger("orders")->warning("stock is low: 100 % {}");
        const std::string packet = log.receive();
        // 12 is facility user, 1 * 8, and severity warning, 4.
        const std::string beforeTime = "<12>";
        const std::string time = "Jan  1 00:00:00";
        const std::string afterTime = " zol_system_log_tests[" + std::to_string(getpid()) +
                                      "]: WARNING [orders] stock is low: 100 % {}";
        ASSERT_EQ(packet.size(), beforeTime.size() + time.size() + afterTime.size()) << packet;
        EXPECT_EQ(packet.substr(0, beforeTime.size()), beforeTime);
        EXPECT_TRUE(isTime(packet.substr(beforeTime.size(), time.size()))) << packet;
        EXPECT_EQ(packet.substr(beforeTime.size() + time.size()), afterTime);
    });
}

TEST(SystemLog, SendsAPriorityForEachLevelInTheConfiguredFacility) {
    support::inFreshProcess([] {
        mountPrivateDev();
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

TEST(SystemLog, SendsThePriorityOfEachFacility) {
    support::inFreshProcess([] {
        mountPrivateDev();
        const ListeningSocket log(systemLog);
        // The numbers of RFC 5424, each with severity 6, information.
        const std::pair<const char*, int> facilities[] = {
            {"user", 1},    {"daemon", 3},  {"local0", 16}, {"local1", 17}, {"local2", 18},
            {"local3", 19}, {"local4", 20}, {"local5", 21}, {"local6", 22}, {"LOCAL7", 23}};
        for (const auto& [name, number] : facilities) {
            setProperty("SystemLog.facility", name);
            LoggerBackend* const backend = Logger::installBackend("SystemLog");
            Logger::getLogger("orders")->info("x");
            Logger::uninstallBackend(backend);
            const std::string packet = log.receive();
            const std::string priority = "<" + std::to_string(number * 8 + 6) + ">";
            EXPECT_EQ(packet.substr(0, priority.size()), priority) << name << ": " << packet;
        }
    });
}

TEST(SystemLog, ReportsAnUnknownFacilityWithTheNearestOne) {
    support::inFreshProcess([] {
        testing::internal::CaptureStderr();
        setProperty("SystemLog.facility", "locall3");
        Logger::installBackend("SystemLog");
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "ZOL back end SystemLog: the property SystemLog.facility is \"locall3\" and not "
                  "one of user, daemon, local0, local1, local2, local3, local4, local5, local6, "
                  "local7; using user (did you mean local3?)\n");
    });
}

TEST(SystemLog, ReplacesASourceThatWouldSplitTheTag) {
    support::inFreshProcess([] {
        testing::internal::CaptureStderr(); // before the mount, which hides the folder of its file
        mountPrivateDev();
        const ListeningSocket log(systemLog);
        setProperty("SystemLog.source", "my shop");
        Logger::installBackend("SystemLog");
        Logger::getLogger("orders")->info("x");
        const std::string packet = log.receive();
        EXPECT_NE(packet.find(" zol_system_log_tests["), std::string::npos) << packet;
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "ZOL back end SystemLog: the property SystemLog.source is \"my shop\" and not a "
                  "text without blanks, control characters, ':' and '['; using "
                  "\"zol_system_log_tests\"\n");
    });
}

TEST(SystemLog, HasATagWithoutBlanksAlsoIfTheNameOfTheProgramHasSome) {
    support::inFreshProcess([] {
        mountPrivateDev();
        const ListeningSocket log(systemLog);
        std::string name = "my shop: [1]";
        program_invocation_short_name = name.data();
        Logger::installBackend("SystemLog");
        Logger::getLogger("orders")->info("x");
        const std::string packet = log.receive();
        EXPECT_NE(packet.find(" my_shop___1]["), std::string::npos) << packet;
    });
}

TEST(SystemLog, CountsMessagesDroppedWhileThereIsNoLog) {
    support::inFreshProcess([] {
        testing::internal::CaptureStderr(); // before the mount, which hides the folder of its file
        mountPrivateDev();
        ASSERT_NE(Logger::installBackend("SystemLog"), nullptr);
        for (int i = 0; i < 10; ++i) {
            EXPECT_NO_THROW(Logger::getLogger("orders")->info("dropped"));
        }
        const ListeningSocket log(systemLog);
        std::this_thread::sleep_for(std::chrono::milliseconds(1000));
        Logger::getLogger("orders")->info("written");
        EXPECT_NE(log.receive().find("written"), std::string::npos);
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "ZOL back end SystemLog: messages are being lost: /dev/log: No such file or "
                  "directory\n"
                  "ZOL back end SystemLog: works again, lost messages: 10\n");
    });
}

TEST(SystemLog, DropsNothingOfABurstThatIsFasterThanTheReader) {
    support::inFreshProcess([] {
        testing::internal::CaptureStderr();
        mountPrivateDev();
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

TEST(SystemLog, SendsToAStreamSocketToo) {
    support::inFreshProcess([] {
        mountPrivateDev();
        ListeningSocket log(systemLog, ListeningSocket::Type::stream);
        Logger::installBackend("SystemLog");
        Logger* const logger = Logger::getLogger("orders");
        logger->info("first");
        logger->info("second");
        log.accept();
        const std::string records = log.receive();
        const std::string end = ": INFO [orders] second";
        EXPECT_EQ(records.substr(0, 4), "<14>");
        EXPECT_NE(records.find(std::string(": INFO [orders] first") + '\0' + "<14>"),
                  std::string::npos);
        EXPECT_EQ(records.substr(records.size() - end.size() - 1), end + '\0');
    });
}

TEST(SystemLog, TruncatesAMessageThatIsTooLongForAPacket) {
    support::inFreshProcess([] {
        mountPrivateDev();
        const ListeningSocket log(systemLog);
        Logger::installBackend("SystemLog");
        Logger::getLogger("orders")->info() << std::string(1000000, 'x');
        Logger::getLogger("orders")->info("short");
        const std::string truncated = log.receive();
        EXPECT_EQ(truncated.size() - truncated.find("INFO"), 60000U);
        EXPECT_EQ(truncated.substr(truncated.size() - 6), "xxx...");
        EXPECT_NE(log.receive().find("short"), std::string::npos);
    });
}

TEST(SystemLog, TimesOutIfTheLogIsNotRead) {
    support::inFreshProcess([] {
        testing::internal::CaptureStderr();
        mountPrivateDev();
        const ListeningSocket stuck(systemLog);
        Logger::installBackend("SystemLog");
        const auto begin = std::chrono::steady_clock::now();
        for (int i = 0; i < 10000; ++i) {
            Logger::getLogger("orders")->info("more than the socket queues");
        }
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
        const std::string report = testing::internal::GetCapturedStderr();
        EXPECT_NE(report.find("messages are being lost: /dev/log"), std::string::npos) << report;
    });
}

} // namespace
