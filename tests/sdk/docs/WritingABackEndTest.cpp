#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

constexpr const char* logFile = "messages.log";

#if defined(_WIN32)
constexpr const char* host = "FileLogHost.exe";
#else
constexpr const char* host = "./FileLogHost";
#endif

std::vector<std::string> loggedLines() {
    std::ifstream file(logFile);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        lines.push_back(line);
    }
    return lines;
}

TEST(WritingABackEnd, CompleteExampleAppendsEveryMessageToItsFile) {
    std::remove(logFile);
    ASSERT_EQ(std::system(host), 0);
    EXPECT_EQ(loggedLines(), (std::vector<std::string>{"orders 30 kept until the back end is there",
                                                       "orders 40 stock is low: 3"}));

    Logger::getLogger("a")->info("before it was there");
    ASSERT_NE(Logger::installBackend("FileLog"), nullptr);
    Logger::getLogger("a")->error("x=") << 1;
    Logger::getLogger("b")->trace("other logger");
    EXPECT_EQ(loggedLines(),
              (std::vector<std::string>{"orders 30 kept until the back end is there",
                                        "orders 40 stock is low: 3", "a 30 before it was there",
                                        "a 50 x=1", "b 10 other logger"}));
}

} // namespace
