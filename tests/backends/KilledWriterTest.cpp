// RotatingFile in a process that is killed at random moments and started again.

#include <chrono>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <regex>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "ChildProcess.h"
#include "FreshFolder.h"
#include "Property.h"
#include "RotatedFiles.h"
#include "Rounds.h"

using namespace ZOL::Framework::GenericLogger;
using namespace std::chrono_literals;
namespace fs = std::filesystem;
using support::ChildProcess;

namespace {

constexpr const char* roundVariable = "ZOL_TEST_WRITES_UNTIL_KILLED";
constexpr std::string_view prefix = "INFO [orders] ";
constexpr std::string_view padding = "........................................";

/// Where a process reports what it has logged.
std::string returnedFile(const std::string& round) {
    return "returned-" + round;
}

/// In a process that the test starts: logs numbers, and reports each of them when its statement has
/// returned.
void logUntilKilledIfBeside() {
    const std::string round = ChildProcess::environment(roundVariable);
    if (round.empty()) {
        return;
    }
    ChildProcess::endWithParent();
    std::ofstream returned(returnedFile(round), std::ios::binary);
    setProperty("RotatingFile.path", "logs/zol.log");
    setProperty("RotatingFile.size", "600");
    setProperty("RotatingFile.count", "0");
    setProperty("RotatingFile.pattern", "%v");
    Logger::installBackend("RotatingFile");
    Logger* const logger = Logger::getLogger("orders");
    for (long number = 1;; ++number) {
        logger->info() << round << '/' << number << padding;
        returned << number << std::endl;
    }
}

/// Starts a process that logs, and kills it. Returns the last number that it has reported.
long killWriter(int round, std::minstd_rand& random) {
    const auto& test = *testing::UnitTest::GetInstance()->current_test_info();
    const std::string name = returnedFile(std::to_string(round));
    ChildProcess::setEnvironment(roundVariable, std::to_string(round).c_str());
    ChildProcess writer(
        {ChildProcess::thisProgram(),
         std::string("--gtest_filter=") + test.test_suite_name() + "." + test.name()});
    const auto deadline = std::chrono::steady_clock::now() + 60s;
    while (!fs::exists(name) || fs::file_size(name) == 0) {
        if (std::chrono::steady_clock::now() > deadline) {
            ADD_FAILURE() << "nothing is logged in round " << round;
            break;
        }
        std::this_thread::sleep_for(1ms);
    }
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 10000));
    writer.kill();
    std::istringstream numbers(textOf(name));
    long last = 0;
    for (std::string number; std::getline(numbers, number) && !numbers.eof();) {
        last = std::stol(number);
    }
    return last;
}

/// How often each message is in a file.
/// @param torn receives the lines that are not whole.
std::map<std::string, int> countMessages(std::vector<std::string>& torn) {
    std::map<std::string, int> counts;
    const std::regex rotated(R"(zol\.\d{8}T\d{6}Z\.\d{3}\.log)");
    for (const auto& entry : fs::directory_iterator("logs")) {
        const std::string name = entry.path().filename().string();
        if (name == "zol.log.lock") {
            continue;
        }
        EXPECT_TRUE(name == "zol.log" || std::regex_match(name, rotated)) << name;
        std::istringstream lines(textOf(entry.path()));
        for (std::string line; std::getline(lines, line);) {
            const bool isWhole =
                line.size() > prefix.size() + padding.size() &&
                line.compare(0, prefix.size(), prefix) == 0 &&
                line.compare(line.size() - padding.size(), std::string::npos, padding) == 0;
            if (!isWhole || lines.eof()) {
                torn.push_back(line);
            } else {
                ++counts[line.substr(prefix.size(), line.size() - prefix.size() - padding.size())];
            }
        }
    }
    return counts;
}

TEST(KilledWriter, HasEachMessageInItsFilesOnceWhoseStatementReturned) {
    logUntilKilledIfBeside();
    inFreshFolder([] {
        fs::create_directory("logs");
        std::minstd_rand random(std::random_device{}());
        std::map<int, long> lastNumbers;
        const int kills = rounds(20);
        for (int round = 1; round <= kills; ++round) {
            lastNumbers[round] = killWriter(round, random);
            ASSERT_GT(lastNumbers[round], 0);
        }
        std::vector<std::string> torn;
        std::map<std::string, int> counts = countMessages(torn);
        for (const auto& [round, last] : lastNumbers) {
            for (long number = 1; number <= last; ++number) {
                const std::string message = std::to_string(round) + "/" + std::to_string(number);
                EXPECT_EQ(counts[message], 1) << message;
                counts.erase(message);
            }
            // The statement that was killed. The system may have taken a part of its line.
            const std::string killed = std::to_string(round) + "/" + std::to_string(last + 1);
            const auto next = counts.find(killed);
            if (next != counts.end()) {
                EXPECT_EQ(next->second, 1) << next->first;
                counts.erase(next);
            } else {
                const std::string whole = std::string(prefix) + killed + std::string(padding);
                auto part = torn.end(); // the longest that may be of it
                for (auto line = torn.begin(); line != torn.end(); ++line) {
                    if (whole.compare(0, line->size(), *line) == 0 &&
                        (part == torn.end() || line->size() > part->size())) {
                        part = line;
                    }
                }
                if (part != torn.end()) {
                    torn.erase(part);
                }
            }
        }
        EXPECT_EQ(torn, std::vector<std::string>());
        EXPECT_TRUE(counts.empty()) << counts.size() << " more, such as " << counts.begin()->first;
        EXPECT_GT(filesRotatedFrom("logs/zol.log").size(), static_cast<std::size_t>(kills));
    });
}

} // namespace
