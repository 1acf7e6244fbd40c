// A folder in place of the log of RotatingFile.

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "FreshFolder.h"
#include "Property.h"

using namespace ZOL::Framework::GenericLogger;
namespace fs = std::filesystem;

namespace {

constexpr auto retryInterval = std::chrono::milliseconds(1000);

void logLine(const char* text) {
    Logger::getLogger("orders")->info(text);
}

void plantFolder() {
    fs::create_directory("zol.log");
    std::ofstream("zol.log/important.txt") << "text";
}

void expectFolderUnchanged() {
    EXPECT_EQ(textOf("zol.log/important.txt"), "text");
    EXPECT_EQ(std::distance(fs::directory_iterator("zol.log"), {}), 1);
}

/// Logs beside the folder, removes it, and logs a second later.
void expectWorkAfterRemoval() {
    logLine("dropped");
    logLine("dropped");
    expectFolderUnchanged();
    fs::remove_all("zol.log");
    std::this_thread::sleep_for(retryInterval);
    logLine("written");
    EXPECT_EQ(textOf("zol.log"), "INFO [orders] written\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ZOL back end RotatingFile: messages are being lost: zol.log is a folder and not a "
              "regular file\n"
              "ZOL back end RotatingFile: works again, lost messages: 2\n");
}

TEST(PlantedFolder, IsRefusedAndItsRemovalNoticed) {
    inFreshFolder([] {
        plantFolder();
        setProperty("RotatingFile.pattern", "%v");
        testing::internal::CaptureStderr();
        Logger::installBackend("RotatingFile");
        expectWorkAfterRemoval();
    });
}

TEST(PlantedFolder, BetweenTwoLinesIsRefusedAndItsRemovalNoticed) {
    inFreshFolder([] {
        setProperty("RotatingFile.pattern", "%v");
        testing::internal::CaptureStderr();
        Logger::installBackend("RotatingFile");
        logLine("before");
        fs::rename("zol.log", "moved.log");
        plantFolder();
        std::this_thread::sleep_for(std::chrono::milliseconds(250)); // until the path is looked at
        expectWorkAfterRemoval();
        EXPECT_EQ(textOf("moved.log"), "INFO [orders] before\n");
    });
}

} // namespace
