// The back ends that write files, on a disk that is full for some time.

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "FreshFolder.h"
#include "Property.h"
#include "linux/PrivateMounts.h"

using namespace ZOL::Framework::GenericLogger;
namespace fs = std::filesystem;

namespace {

constexpr int written = 10;
constexpr int attempted = 500;

std::string numbered(int number) {
    return "message " + std::to_string(number) + std::string(100, '.');
}

void expectDropsToBeReportedAndCounted(const std::string& backend) {
    fs::create_directory("disk");
    support::leaveTheMachinesMounts();
    support::mountMemory("disk", "size=64k");
    setProperty(backend + ".path", "disk/zol.log");
    setProperty(backend + ".pattern", "%v");
    testing::internal::CaptureStderr();
    Logger::installBackend(backend.c_str());
    Logger* const logger = Logger::getLogger("orders");
    std::string expected;
    const auto expectNext = [&expected](int number) {
        expected += "INFO [orders] " + numbered(number) + "\n";
    };
    for (int i = 0; i < written; ++i) {
        logger->info() << numbered(i);
        expectNext(i);
    }
    // The last page of the log has room left: messages that fit into it are not dropped.
    std::ofstream("disk/filler") << std::string(std::size_t{64} * 1024, 'x');
    for (int i = 0; i < attempted; ++i) {
        EXPECT_NO_THROW(logger->info() << numbered(i));
    }
    const std::string full = textOf("disk/zol.log");
    EXPECT_EQ(full.substr(0, expected.size()), expected);
    fs::remove("disk/filler");
    std::this_thread::sleep_for(std::chrono::milliseconds(1100));
    logger->info() << "there is room again";

    const std::string text = textOf("disk/zol.log");
    std::istringstream lines(text);
    int complete = 0;
    for (std::string line; std::getline(lines, line);) {
        complete += line.size() == numbered(0).size() + 14 ||
                            line.size() == numbered(10).size() + 14 ||
                            line.size() == numbered(100).size() + 14
                        ? 1
                        : 0;
    }
    const std::string last = "\nINFO [orders] there is room again\n";
    EXPECT_EQ(text.rfind(last), text.size() - last.size()) << "on its own line";

    const std::string report = testing::internal::GetCapturedStderr();
    const std::size_t end = report.find('\n');
    EXPECT_EQ(report.find("ZOL back end " + backend + ": messages are being lost: "), 0U) << report;
    EXPECT_EQ(report.substr(end + 1), "ZOL back end " + backend + ": works again, lost messages: " +
                                          std::to_string(written + attempted - complete) + "\n");
}

TEST(FullDisk, MakesRotatingFileCountDroppedMessages) {
    inFreshFolder([] { expectDropsToBeReportedAndCounted("RotatingFile"); });
}

TEST(FullDisk, MakesDailyFileCountDroppedMessages) {
    inFreshFolder([] { expectDropsToBeReportedAndCounted("DailyFile"); });
}

} // namespace
