#include <chrono>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "FreshFolder.h"
#include "Property.h"
#include "RotatedFiles.h"
#include "TextShape.h"

using namespace ZOL::Framework::GenericLogger;
namespace fs = std::filesystem;

namespace {

using Texts = std::vector<std::string>;

TEST(DailyFile, WritesToZolLogByDefault) {
    inFreshFolder([] {
        Logger::installBackend("DailyFile");
        Logger::getLogger("orders")->warning("stock is low");
        const std::string text = textOf("zol.log");
        EXPECT_TRUE(hasShape(text.substr(0, timeStampShape.size()), timeStampShape)) << text;
        EXPECT_NE(text.find(" WARNING [orders] stock is low\n"), std::string::npos) << text;
    });
}

TEST(DailyFile, FlushesEachLineAndAppends) {
    inFreshFolder([] {
        setProperty("DailyFile.pattern", "%v");
        setProperty("DailyFile.path", "logs/shop.txt");
        Logger::installBackend("DailyFile");
        Logger::getLogger("orders")->info("first");
        EXPECT_EQ(textOf("logs/shop.txt"), "INFO [orders] first\n");
        Logger::getLogger("orders")->info("second");
        EXPECT_EQ(textOf("logs/shop.txt"), "INFO [orders] first\nINFO [orders] second\n");
    });
}

TEST(DailyFile, ContinuesTheFileOfTheDayAfterARestart) {
    inFreshFolder([] {
        std::ofstream("zol.log") << "of an earlier process\n";
        setProperty("DailyFile.pattern", "%v");
        Logger::installBackend("DailyFile");
        Logger::getLogger("orders")->info("x");
        EXPECT_EQ(textOf("zol.log"), "of an earlier process\nINFO [orders] x\n");
    });
}

TEST(DailyFile, RenamesAFileOfAnEarlierDayAfterARestart) {
    inFreshFolder([] {
        std::ofstream("zol.log") << "of an earlier process\n";
        const auto written = fs::last_write_time("zol.log") - std::chrono::hours(72);
        fs::last_write_time("zol.log", written);
        setProperty("DailyFile.pattern", "%v");
        Logger::installBackend("DailyFile");
        Logger::getLogger("orders")->info("x");
        EXPECT_EQ(textOf("zol.log"), "INFO [orders] x\n");
        const std::time_t now = std::time(nullptr);
        std::string days; // around midnight, two days are right
        for (const int hours : {72, 73}) {
            const std::time_t then = now - std::time_t{hours} * 3600;
            char day[11] = "";
            std::strftime(day, sizeof(day), "%Y-%m-%d", std::localtime(&then));
            days += days.empty() ? day : "|" + std::string(day);
        }
        EXPECT_EQ(rotatedTexts("zol.log", "(" + days + ")"), Texts{"of an earlier process\n"});
    });
}

TEST(DailyFile, AlsoBeginsANewFileAtASize) {
    inFreshFolder([] {
        setProperty("DailyFile.pattern", "%v");
        setProperty("DailyFile.size", "20");
        Logger::installBackend("DailyFile");
        for (const char* text : {"1", "2", "3"}) {
            Logger::getLogger("orders")->info(text);
        }
        EXPECT_EQ(textOf("zol.log"), "INFO [orders] 3\n");
        EXPECT_EQ(rotatedTexts("zol.log", ".{10}"),
                  (Texts{"INFO [orders] 1\n", "INFO [orders] 2\n"}));
    });
}

TEST(DailyFile, ReportsInvalidTimesAndUsesTheFallbacks) {
    inFreshFolder([] {
        setProperty("DailyFile.hour", "24");
        setProperty("DailyFile.minute", "60");
        setProperty("DailyFile.days", "many");
        testing::internal::CaptureStderr();
        Logger::installBackend("DailyFile");
        Logger::getLogger("orders")->info("written");
        EXPECT_EQ(
            testing::internal::GetCapturedStderr(),
            "ZOL back end DailyFile: the property DailyFile.hour is \"24\" and not a number "
            "from 0 to 23; using 0\n"
            "ZOL back end DailyFile: the property DailyFile.minute is \"60\" and not a number "
            "from 0 to 59; using 0\n"
            "ZOL back end DailyFile: the property DailyFile.days is \"many\" and not a number "
            "from 0 to 10000; using 0\n");
        EXPECT_NE(textOf("zol.log"), "");
    });
}

TEST(DailyFile, CountsMessagesDroppedWhileTheFileCannotBeOpened) {
    inFreshFolder([] {
        std::ofstream("folder") << "a file where a folder is needed";
        setProperty("DailyFile.path", "folder/zol.log");
        testing::internal::CaptureStderr();
        ASSERT_NE(Logger::installBackend("DailyFile"), nullptr);
        for (int i = 0; i < 3; ++i) {
            EXPECT_NO_THROW(Logger::getLogger("orders")->info("dropped"));
        }
        fs::remove("folder");
        std::this_thread::sleep_for(std::chrono::milliseconds(1000));
        Logger::getLogger("orders")->info("written");
        const std::string report = testing::internal::GetCapturedStderr();
        EXPECT_NE(report.find("DailyFile: messages are being lost: "), std::string::npos) << report;
        EXPECT_NE(report.find("DailyFile: works again, lost messages: 3\n"), std::string::npos)
            << report;
    });
}

} // namespace
