#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <regex>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "FreshFolder.h"
#include "Property.h"

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

TEST(DailyFile, WritesToAFileNamedAfterTheDayIfNothingIsSet) {
    inFreshFolder([] {
        Logger::installBackend("DailyFile");
        Logger::getLogger("orders")->warning("stock is low");
        ASSERT_EQ(files().size(), 1U);
        const std::string name = files().front();
        const std::regex dated(R"(zol_(\d{4}-\d\d-\d\d)\.log)");
        std::smatch match;
        ASSERT_TRUE(std::regex_match(name, match, dated)) << name;
        const std::string text = textOf(name);
        EXPECT_EQ(text.substr(0, 10), match[1]) << "the line has the day of its file";
        EXPECT_NE(text.find(" WARNING [orders] stock is low\n"), std::string::npos) << text;
    });
}

TEST(DailyFile, HasEachLineInTheFileAtOnceAndAppendsToWhatIsThere) {
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

TEST(DailyFile, TellsOfTimesThatAreNoneAndUsesTheDefaults) {
    inFreshFolder([] {
        setProperty("DailyFile.hour", "24");
        setProperty("DailyFile.minute", "60");
        setProperty("DailyFile.days", "many");
        testing::internal::CaptureStderr();
        Logger::installBackend("DailyFile");
        Logger::getLogger("orders")->info("out");
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

TEST(DailyFile, LosesMessagesWhileTheFileCannotBeOpenedAndSaysHowMany) {
    inFreshFolder([] {
        std::ofstream("folder") << "a file, which has no files in it";
        setProperty("DailyFile.path", "folder/zol.log");
        testing::internal::CaptureStderr();
        ASSERT_NE(Logger::installBackend("DailyFile"), nullptr);
        for (int i = 0; i < 3; ++i) {
            EXPECT_NO_THROW(Logger::getLogger("orders")->info("lost"));
        }
        fs::remove("folder");
        std::this_thread::sleep_for(std::chrono::milliseconds(1000));
        Logger::getLogger("orders")->info("out");
        const std::string told = testing::internal::GetCapturedStderr();
        EXPECT_NE(told.find("DailyFile: messages are being lost: "), std::string::npos) << told;
        EXPECT_NE(told.find("DailyFile: works again, lost messages: 3\n"), std::string::npos)
            << told;
    });
}

} // namespace
