// The back ends that write files, on a disk that is full for a while.

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "FreshFolder.h"
#include "linux/PrivateMounts.h"
#include "Property.h"

using namespace ZOL::Framework::GenericLogger;
namespace fs = std::filesystem;

namespace {

constexpr int written = 10;
constexpr int lost = 500;

std::string numbered(int number) {
    return "message " + std::to_string(number) + std::string(100, '.');
}

/// The one file of that folder which is not the filling.
fs::path logIn(const fs::path& folder) {
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.path().filename() != "filling") {
            return entry.path();
        }
    }
    return {};
}

void expectLossToBeToldAndCounted(const std::string& backend) {
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
    // The log's own page has room left: the messages that still fit are not lost.
    std::ofstream("disk/filling") << std::string(std::size_t{64} * 1024, 'x');
    for (int i = 0; i < lost; ++i) {
        EXPECT_NO_THROW(logger->info() << numbered(i));
    }
    const std::string full = textOf(logIn("disk"));
    EXPECT_EQ(full.substr(0, expected.size()), expected);
    fs::remove("disk/filling");
    std::this_thread::sleep_for(std::chrono::milliseconds(1100));
    logger->info() << "there is room again";

    const std::string text = textOf(logIn("disk"));
    std::istringstream lines(text);
    int whole = 0;
    for (std::string line; std::getline(lines, line);) {
        whole += line.size() == numbered(0).size() + 14 ||
                         line.size() == numbered(10).size() + 14 ||
                         line.size() == numbered(100).size() + 14
                     ? 1
                     : 0;
    }
    const std::string last = "\nINFO [orders] there is room again\n";
    EXPECT_EQ(text.rfind(last), text.size() - last.size()) << "on a line of its own";

    const std::string told = testing::internal::GetCapturedStderr();
    const std::size_t end = told.find('\n');
    EXPECT_EQ(told.find("ZOL back end " + backend + ": messages are being lost: "), 0U) << told;
    EXPECT_EQ(told.substr(end + 1), "ZOL back end " + backend + ": works again, lost messages: " +
                                        std::to_string(written + lost - whole) + "\n");
}

TEST(FullDisk, CostsRotatingFileMessagesThatItCounts) {
    inFreshFolder([] { expectLossToBeToldAndCounted("RotatingFile"); });
}

TEST(FullDisk, CostsDailyFileMessagesThatItCounts) {
    inFreshFolder([] { expectLossToBeToldAndCounted("DailyFile"); });
}

} // namespace
