// The back ends that write files, on a disk that is filled and freed again and again while files
// are rotated.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "FreshFolder.h"
#include "Property.h"
#include "linux/PrivateMounts.h"

using namespace ZOL::Framework::GenericLogger;
namespace fs = std::filesystem;

namespace {

constexpr int linesWithRoom = 100;
constexpr int linesWithoutRoom = 300;
constexpr std::size_t diskBytes = std::size_t{512} * 1024;

/// Of several lengths. No line lacks only its line end when it is cut at the end of a page.
std::string message(int number) {
    return "<" + std::to_string(number) +
           std::string(50 + static_cast<std::size_t>(number) % 7 * 20, '.') + ">";
}

/// Leaves less room than the lines need.
void fillDisk(int cycle) {
    const std::uintmax_t room = std::uintmax_t{4096} * (static_cast<unsigned>(cycle) % 4);
    const std::uintmax_t free = fs::space("disk").available;
    std::ofstream("disk/filler") << std::string(free > room ? free - room : 0, 'x');
}

/// How often each message is in a file.
class FoundLines {
public:
    /// Expects whole lines, and between them begins of lines, each on a line of its own.
    FoundLines() {
        for (const auto& entry : fs::directory_iterator("disk")) {
            if (entry.path().extension() == ".log") {
                readFile(entry.path());
            }
        }
    }

    std::map<std::string, int> counts;
    int torn = 0;

private:
    void readFile(const fs::path& path) {
        const std::string prefix = "INFO [orders] ";
        std::istringstream lines(textOf(path));
        for (std::string line; std::getline(lines, line);) {
            EXPECT_FALSE(lines.eof()) << path << " ends within " << line;
            EXPECT_EQ(line.find(prefix.substr(0, line.size())), 0U) << path << ": " << line;
            EXPECT_EQ(line.find(prefix, 1), std::string::npos) << "two in one: " << line;
            if (!line.empty() && line.back() == '>') {
                ++counts[line.substr(std::min(prefix.size(), line.size()))];
            } else {
                EXPECT_GT(line.size(), 0U) << path;
                ++torn;
            }
        }
    }
};

/// The sum of the numbers of lost messages. Expects each loss to be reported once.
int reportedLosses(const std::string& report, int cycles) {
    const std::regex works("works again, lost messages: ([0-9]+)\n");
    int lost = 0;
    int reports = 0;
    for (std::sregex_iterator match(report.begin(), report.end(), works), end; match != end;
         ++match) {
        lost += std::stoi((*match)[1]);
        ++reports;
    }
    EXPECT_GE(reports, cycles) << report;
    return lost;
}

void expectEachMessageToBeFoundOrReported(const std::string& backend) {
    fs::create_directory("disk");
    support::leaveTheMachinesMounts();
    support::mountMemory("disk", ("size=" + std::to_string(diskBytes)).c_str());
    setProperty(backend + ".path", "disk/zol.log");
    setProperty(backend + ".pattern", "%v");
    setProperty(backend + ".size", "5000");
    setProperty(backend + ".count", "0");
    testing::internal::CaptureStderr();
    Logger::installBackend(backend.c_str());
    Logger* const logger = Logger::getLogger("orders");
    constexpr int cycles = 8; // with more of them, the logs alone fill the disk
    int logged = 0;
    const auto log = [&](int count) {
        for (int i = 0; i < count; ++i) {
            logger->info() << message(logged);
            ++logged;
        }
    };
    for (int cycle = 0; cycle < cycles; ++cycle) {
        log(linesWithRoom);
        fillDisk(cycle);
        log(linesWithoutRoom);
        fs::remove("disk/filler");
    }
    log(linesWithRoom);
    const FoundLines found;
    const int lost = reportedLosses(testing::internal::GetCapturedStderr(), cycles);
    EXPECT_GT(lost, cycles) << "the disk was not full";
    EXPECT_GT(found.torn, 0) << "no line was cut";
    EXPECT_EQ(found.counts.size() + static_cast<std::size_t>(lost),
              static_cast<std::size_t>(logged));
    for (const auto& [text, count] : found.counts) {
        EXPECT_EQ(count, 1) << text;
        const int number = std::stoi(text.substr(1));
        EXPECT_EQ(text, message(number));
    }
}

TEST(FullDiskCycles, LeaveEachMessageOfRotatingFileInAFileOrReportItAsLost) {
    inFreshFolder([] { expectEachMessageToBeFoundOrReported("RotatingFile"); });
}

TEST(FullDiskCycles, LeaveEachMessageOfDailyFileInAFileOrReportItAsLost) {
    inFreshFolder([] { expectEachMessageToBeFoundOrReported("DailyFile"); });
}

} // namespace
