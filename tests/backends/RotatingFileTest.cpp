#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <thread>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "FreshFolder.h"
#include "Property.h"

using namespace ZOL::Framework::GenericLogger;
namespace fs = std::filesystem;

namespace {

constexpr const char* messagesAlone = "%v";
constexpr auto pauseBetweenAttempts = std::chrono::milliseconds(1000);

void logLine(const std::string& text) {
    Logger::getLogger("orders")->info() << text;
}

TEST(RotatingFile, WritesToZolLogInTheCurrentFolderIfNothingIsSet) {
    inFreshFolder([] {
        Logger::installBackend("RotatingFile");
        logLine("stock is low");
        const std::string text = textOf("zol.log");
        constexpr std::string_view message = " INFO [orders] stock is low\n";
        constexpr std::string_view stamp = "2026-01-31 09:05:07.012";
        ASSERT_EQ(text.size(), stamp.size() + message.size()) << text;
        EXPECT_EQ(text.substr(stamp.size()), message);
        EXPECT_EQ(text[4], '-') << text;
        EXPECT_EQ(text[19], '.') << text;
    });
}

TEST(RotatingFile, HasEachLineInTheFileAtOnceAndAppendsToWhatIsThere) {
    inFreshFolder([] {
        std::ofstream("zol.log") << "from yesterday\n";
        setProperty("RotatingFile.pattern", messagesAlone);
        Logger::installBackend("RotatingFile");
        logLine("first");
        EXPECT_EQ(textOf("zol.log"), "from yesterday\nINFO [orders] first\n");
        logLine("second");
        EXPECT_EQ(textOf("zol.log"), "from yesterday\nINFO [orders] first\nINFO [orders] second\n");
    });
}

TEST(RotatingFile, EndsALineThatWasCutShortBeforeItAppends) {
    inFreshFolder([] {
        std::ofstream("zol.log") << "cut sho";
        setProperty("RotatingFile.pattern", messagesAlone);
        Logger::installBackend("RotatingFile");
        logLine("first");
        EXPECT_EQ(textOf("zol.log"), "cut sho\nINFO [orders] first\n");
    });
}

TEST(RotatingFile, BeginsANewFileAtItsSizeAndKeepsAsManyAsAskedFor) {
    inFreshFolder([] {
        setProperty("RotatingFile.pattern", messagesAlone);
        setProperty("RotatingFile.path", "logs/shop.txt");
        setProperty("RotatingFile.size", "64");
        setProperty("RotatingFile.count", "2");
        Logger::installBackend("RotatingFile");
        for (const char* text : {"1", "2", "3", "4"}) {
            logLine(std::string(30, '-') + text); // one fits, two do not
        }
        const auto line = [](const char* text) {
            return "INFO [orders] " + std::string(30, '-') + text + "\n";
        };
        EXPECT_EQ(textOf("logs/shop.txt"), line("4"));
        EXPECT_EQ(textOf("logs/shop.1.txt"), line("3"));
        EXPECT_EQ(textOf("logs/shop.2.txt"), line("2"));
        EXPECT_FALSE(fs::exists("logs/shop.3.txt"));
    });
}

TEST(RotatingFile, WritesToAFileWithANameInAnyLanguage) {
    inFreshFolder([] {
        const ZOL::Framework::Management::WideString name{0x00F6, 0x65E5, u'.', u'l'};
        ZOL::Framework::Framework::propertyManager()->setProperty(
            support::wide("RotatingFile.path"), name);
        Logger::installBackend("RotatingFile");
        logLine("first");
        EXPECT_NE(textOf(fs::path(name)), "");
    });
}

TEST(RotatingFile, LetsOutWhatTheRulesForTheLoggersLetOut) {
    inFreshFolder([] {
        setProperty("RotatingFile.pattern", messagesAlone);
        setProperty("RotatingFile.levels", "=WARNING;orders.stock=TRACE");
        Logger::installBackend("RotatingFile");
        Logger::getLogger("orders")->info("dropped");
        Logger::getLogger("orders")->warning("out");
        Logger::getLogger("orders.stock")->trace("out");
        EXPECT_EQ(textOf("zol.log"), "WARNING [orders] out\nTRACE [orders.stock] out\n");
    });
}

TEST(RotatingFile, TellsOfABadSettingInOneLineAndUsesTheDefault) {
    inFreshFolder([] {
        setProperty("RotatingFile.size", "12Q");
        testing::internal::CaptureStderr();
        Logger::installBackend("RotatingFile");
        logLine("out");
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "ZOL back end RotatingFile: the property RotatingFile.size is \"12Q\" and not a "
                  "size such as 4096, 500K, 10M or 1G; using 10485760\n");
        EXPECT_NE(textOf("zol.log"), "");
    });
}

TEST(RotatingFile, LosesMessagesWhileTheFileCannotBeOpenedAndSaysHowMany) {
    inFreshFolder([] {
        std::ofstream("folder") << "a file, which has no files in it";
        setProperty("RotatingFile.pattern", messagesAlone);
        setProperty("RotatingFile.path", "folder/zol.log");
        testing::internal::CaptureStderr();
        ASSERT_NE(Logger::installBackend("RotatingFile"), nullptr);
        const auto begin = std::chrono::steady_clock::now();
        for (int i = 0; i < 100; ++i) {
            EXPECT_NO_THROW(logLine("lost"));
        }
        const auto taken = std::chrono::steady_clock::now() - begin;
        EXPECT_LT(taken, pauseBetweenAttempts) << "one attempt, not a hundred of 50 ms";
        fs::remove("folder");
        std::this_thread::sleep_for(pauseBetweenAttempts);
        logLine("out");
        EXPECT_EQ(textOf("folder/zol.log"), "INFO [orders] out\n");

        const std::string told = testing::internal::GetCapturedStderr();
        const std::size_t end = told.find('\n');
        EXPECT_EQ(told.find("ZOL back end RotatingFile: messages are being lost: "), 0U) << told;
        EXPECT_EQ(told.substr(end + 1),
                  "ZOL back end RotatingFile: works again, lost messages: 100\n");
    });
}

} // namespace
