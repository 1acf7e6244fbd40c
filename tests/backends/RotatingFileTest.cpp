#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
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

constexpr const char* messageOnly = "%v";
constexpr auto retryInterval = std::chrono::milliseconds(1000);

void logLine(const std::string& text) {
    Logger::getLogger("orders")->info() << text;
}

TEST(RotatingFile, WritesToZolLogInTheCurrentFolderByDefault) {
    inFreshFolder([] {
        Logger::installBackend("RotatingFile");
        logLine("stock is low");
        const std::string text = textOf("zol.log");
        constexpr std::string_view message = " INFO [orders] stock is low\n";
        ASSERT_EQ(text.size(), timeStampShape.size() + message.size()) << text;
        EXPECT_EQ(text.substr(timeStampShape.size()), message);
        EXPECT_TRUE(hasShape(text.substr(0, timeStampShape.size()), timeStampShape)) << text;
    });
}

TEST(RotatingFile, FlushesEachLineAndAppends) {
    inFreshFolder([] {
        std::ofstream("zol.log") << "from yesterday\n";
        setProperty("RotatingFile.pattern", messageOnly);
        Logger::installBackend("RotatingFile");
        logLine("first");
        EXPECT_EQ(textOf("zol.log"), "from yesterday\nINFO [orders] first\n");
        logLine("second");
        EXPECT_EQ(textOf("zol.log"), "from yesterday\nINFO [orders] first\nINFO [orders] second\n");
    });
}

TEST(RotatingFile, TerminatesATornLineBeforeItAppends) {
    inFreshFolder([] {
        std::ofstream("zol.log") << "torn li";
        setProperty("RotatingFile.pattern", messageOnly);
        Logger::installBackend("RotatingFile");
        logLine("first");
        EXPECT_EQ(textOf("zol.log"), "torn li\nINFO [orders] first\n");
    });
}

TEST(RotatingFile, StartsANewFileAtTheSizeAndKeepsTheConfiguredNumber) {
    inFreshFolder([] {
        setProperty("RotatingFile.pattern", messageOnly);
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
        EXPECT_EQ(rotatedTexts("logs/shop.txt"), (Texts{line("2"), line("3")}));
    });
}

TEST(RotatingFile, KeepsFiveOlderFilesByDefault) {
    inFreshFolder([] {
        setProperty("RotatingFile.size", "1");
        Logger::installBackend("RotatingFile");
        for (int i = 0; i < 8; ++i) {
            logLine("longer than a file");
        }
        EXPECT_TRUE(fs::exists("zol.log"));
        EXPECT_EQ(filesRotatedFrom("zol.log").size(), 5U);
    });
}

constexpr std::size_t defaultSize = 10485760;

/// Installs RotatingFile and logs two lines of together so many bytes. Returns the size of the
/// first one, which has no text.
std::size_t logTwoLines(std::size_t bytes) {
    setProperty("RotatingFile.pattern", messageOnly);
    Logger::installBackend("RotatingFile");
    logLine("");
    const std::size_t lineSize = fs::file_size("zol.log");
    logLine(std::string(bytes - 2 * lineSize, 'x'));
    return lineSize;
}

TEST(RotatingFile, StartsANewFileAtTenMebibytesByDefault) {
    inFreshFolder([] {
        const std::size_t lineSize = logTwoLines(defaultSize);
        EXPECT_EQ(fs::file_size("zol.log"), defaultSize);
        EXPECT_EQ(filesRotatedFrom("zol.log").size(), 0U) << "the file is full";
        logLine("");
        ASSERT_EQ(filesRotatedFrom("zol.log").size(), 1U);
        EXPECT_EQ(fs::file_size(filesRotatedFrom("zol.log")[0]), defaultSize);
        EXPECT_EQ(fs::file_size("zol.log"), lineSize);
    });
}

TEST(RotatingFile, StartsANewFileIfALineIsOneByteTooLong) {
    inFreshFolder([] {
        const std::size_t lineSize = logTwoLines(defaultSize + 1);
        ASSERT_EQ(filesRotatedFrom("zol.log").size(), 1U);
        EXPECT_EQ(fs::file_size(filesRotatedFrom("zol.log")[0]), lineSize);
        EXPECT_EQ(fs::file_size("zol.log"), defaultSize - lineSize + 1);
    });
}

TEST(RotatingFile, WritesMessagesOfEveryLevelByDefault) {
    inFreshFolder([] {
        setProperty("RotatingFile.pattern", messageOnly);
        Logger::installBackend("RotatingFile");
        Logger::getLogger("orders")->log(static_cast<LoggingLevel>(-1)) << "x";
        Logger::getLogger("stock")->trace("x");
        EXPECT_EQ(textOf("zol.log"), "TRACE-11 [orders] x\nTRACE [stock] x\n");
    });
}

TEST(RotatingFile, WritesToAFileWithAUnicodeName) {
    inFreshFolder([] {
        const ZOL::Framework::Management::WideString name{0x00F6, 0x65E5, u'.', u'l'};
        ZOL::Framework::Framework::propertyManager()->setProperty(
            support::wide("RotatingFile.path"), name);
        Logger::installBackend("RotatingFile");
        logLine("first");
        EXPECT_NE(textOf(fs::path(name)), "");
    });
}

TEST(RotatingFile, AppliesTheLevelFilter) {
    inFreshFolder([] {
        setProperty("RotatingFile.pattern", messageOnly);
        setProperty("RotatingFile.levels", "=WARNING;orders.stock=TRACE");
        Logger::installBackend("RotatingFile");
        Logger::getLogger("orders")->info("dropped");
        Logger::getLogger("orders")->warning("written");
        Logger::getLogger("orders.stock")->trace("written");
        EXPECT_EQ(textOf("zol.log"), "WARNING [orders] written\nTRACE [orders.stock] written\n");
    });
}

TEST(RotatingFile, ReportsAnInvalidSettingInOneLineAndUsesTheFallback) {
    inFreshFolder([] {
        setProperty("RotatingFile.size", "12Q");
        testing::internal::CaptureStderr();
        Logger::installBackend("RotatingFile");
        logLine("written");
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "ZOL back end RotatingFile: the property RotatingFile.size is \"12Q\" and not a "
                  "size such as 4096, 500K, 10M or 1G, or 0; using 10485760\n");
        EXPECT_NE(textOf("zol.log"), "");
    });
}

TEST(RotatingFile, CountsMessagesDroppedWhileTheFileCannotBeOpened) {
    inFreshFolder([] {
        std::ofstream("folder") << "a file where a folder is needed";
        setProperty("RotatingFile.pattern", messageOnly);
        setProperty("RotatingFile.path", "folder/zol.log");
        testing::internal::CaptureStderr();
        ASSERT_NE(Logger::installBackend("RotatingFile"), nullptr);
        const auto begin = std::chrono::steady_clock::now();
        for (int i = 0; i < 100; ++i) {
            EXPECT_NO_THROW(logLine("dropped"));
        }
        const auto taken = std::chrono::steady_clock::now() - begin;
        EXPECT_LT(taken, retryInterval) << "one attempt, not 100 of 50 ms each";
        fs::remove("folder");
        std::this_thread::sleep_for(retryInterval);
        logLine("written");
        EXPECT_EQ(textOf("folder/zol.log"), "INFO [orders] written\n");

        const std::string report = testing::internal::GetCapturedStderr();
        const std::size_t end = report.find('\n');
        EXPECT_EQ(report.find("ZOL back end RotatingFile: messages are being lost: "), 0U)
            << report;
        EXPECT_EQ(report.substr(end + 1),
                  "ZOL back end RotatingFile: works again, lost messages: 100\n");
    });
}

} // namespace
