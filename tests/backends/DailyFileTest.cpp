#include <algorithm>
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
#include "TextShape.h"

using namespace ZOL::Framework::GenericLogger;
namespace fs = std::filesystem;

namespace {

std::vector<std::string> files() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(".")) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

TEST(DailyFile, WritesToAFileNamedAfterTheDateByDefault) {
    inFreshFolder([] {
        Logger::installBackend("DailyFile");
        Logger::getLogger("orders")->warning("stock is low");
        ASSERT_EQ(files().size(), 1U);
        const std::string name = files().front();
        ASSERT_TRUE(hasShape(name, "zol_0000-00-00.log")) << name;
        const std::string text = textOf(name);
        EXPECT_TRUE(hasShape(text.substr(0, timeStampShape.size()), timeStampShape)) << text;
        EXPECT_EQ(text.substr(0, 10), name.substr(4, 10)) << "the line has the date of its file";
        EXPECT_NE(text.find(" WARNING [orders] stock is low\n"), std::string::npos) << text;
    });
}

TEST(DailyFile, FlushesEachLineAndAppends) {
    inFreshFolder([] {
        setProperty("DailyFile.pattern", "%v");
        setProperty("DailyFile.path", "logs/shop.txt");
        Logger::installBackend("DailyFile");
        Logger::getLogger("orders")->info("first");
        const fs::path file = fs::directory_iterator("logs")->path();
        EXPECT_EQ(textOf(file), "INFO [orders] first\n");
        Logger::getLogger("orders")->info("second");
        EXPECT_EQ(textOf(file), "INFO [orders] first\nINFO [orders] second\n");
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
        EXPECT_EQ(files().size(), 1U);
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
