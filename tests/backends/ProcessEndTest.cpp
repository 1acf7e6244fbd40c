// What is in the files of RotatingFile when its process has ended, in all ways in which it may end.

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ChildProcess.h"
#include "EndProcess.h"
#include "FreshFolder.h"
#include "LogFiles.h"
#include "Rounds.h"
#include "WaitFor.h"
#include "files/Compression.h"

using support::ChildProcess;
using ZOL::Backends::removeIncompleteCompression;
namespace fs = std::filesystem;

namespace {

constexpr int exitCode = 3;
constexpr int maxThreads = 3;

struct Round {
    std::string end;
    std::string flush;
    std::string compress;
    int threads;
    int microseconds;

    std::string text() const {
        return end + " " + flush + " " + compress + " " + std::to_string(threads) + " " +
               std::to_string(microseconds);
    }
};

/// Whether the exit table is run, and in it a function that stops all threads.
bool stopsThreads(const std::string& end) {
    return end == "return" || end == "exit" || end == "exitOfThread";
}

/// The number of the last statement of a thread that returned.
std::uint64_t acknowledged(int thread) {
    std::uint64_t number = 0;
    std::ifstream file("acknowledged." + std::to_string(thread), std::ios::binary);
    file.read(reinterpret_cast<char*>(&number), sizeof(number));
    return number;
}

/// Checks that each thread's lines are there in order, once, and without a gap up to the last one.
/// @param isLossy whether the last ones may be missing.
void checkLines(const Round& round, bool isLossy) {
    std::map<int, std::uint64_t> last;
    std::vector<std::string> words;
    std::istringstream lines(textOfAllFiles("zol.log"));
    constexpr const char* prefix = "INFO [x] ";
    for (std::string line; std::getline(lines, line);) {
        if (lines.eof() && !stopsThreads(round.end)) {
            break; // a thread was killed while the system wrote this line
        }
        ASSERT_EQ(line.rfind(prefix, 0), 0U) << "a torn line: " << line;
        ASSERT_FALSE(lines.eof()) << "a torn line: " << line;
        line.erase(0, std::string(prefix).size());
        if (line == "last words" || line == "exit") {
            words.push_back(line);
            continue;
        }
        std::istringstream numbers(line);
        int thread = -1;
        std::uint64_t number = 0;
        ASSERT_TRUE(numbers >> thread >> number) << line;
        ASSERT_EQ(number, last[thread] + 1) << "thread " << thread;
        last[thread] = number;
    }
    for (int thread = 0; thread < round.threads; ++thread) {
        EXPECT_LE(last[thread], acknowledged(thread) + 1);
        if (!isLossy) {
            EXPECT_GE(last[thread], acknowledged(thread))
                << "lines of thread " << thread << " are missing";
        }
    }
    EXPECT_EQ(words, stopsThreads(round.end) ? (std::vector<std::string>{"exit", "last words"})
                                             : std::vector<std::string>());
}

/// Starts the client in an empty folder. Wine was seen to hang while it loads the libraries of a
/// program, once in some thousands of starts: a client that has not begun is started again.
std::unique_ptr<ChildProcess> startClient(const std::vector<std::string>& command) {
    constexpr int maxStarts = 3;
    for (int start = 1;; ++start) {
        for (const auto& entry : fs::directory_iterator(".")) {
            fs::remove(entry.path());
        }
        auto process = std::make_unique<ChildProcess>(command);
        if (isSoon([] { return fs::exists("begun"); }) || start == maxStarts) {
            return process;
        }
        std::cerr << "the client has not begun within ten seconds; starting it again\n";
        process->kill();
    }
}

/// Whether the client has ended. If not, nothing can be said of its files.
bool runRound(const Round& round, bool isLossy) {
    const auto process = startClient({ChildProcess::program("ProcessEndClient"), round.end,
                                      round.flush, round.compress, std::to_string(round.threads),
                                      std::to_string(round.microseconds)});
    constexpr std::chrono::seconds longest(30);
    if (!process->endsWithin(longest)) {
        process->kill();
        return false;
    }
    const int code = process->wait();
    if (round.end == "abort" || round.end == "kill") {
        EXPECT_NE(code, exitCode);
    } else {
        EXPECT_EQ(code, exitCode);
    }
    removeIncompleteCompression("zol.log"); // as the next process does first
    checkLines(round, isLossy);
    for (const auto& entry : fs::directory_iterator(".")) {
        EXPECT_NE(entry.path().extension(), ".tmp") << entry.path();
    }
    return true;
}

/// Runs rounds of a kind with everything else at random.
void runRounds(const std::string& end, const std::vector<std::string>& flushes, bool isLossy) {
    inFreshFolder([&] {
        // The leak check of a sanitizer cannot stop threads that end.
        const std::string options = ChildProcess::environment("ASAN_OPTIONS") + ":detect_leaks=0";
        ChildProcess::setEnvironment("ASAN_OPTIONS", options.c_str());
        const auto seed = std::random_device{}();
        std::minstd_rand random(seed);
        const int count = rounds(20);
        constexpr int hundred = 100;
        const int maxHangs = (count * processEnds().maxHangsPerHundred + hundred - 1) / hundred;
        int hangs = 0;
        for (int i = 0; i < count && !testing::Test::HasFailure(); ++i) {
            constexpr unsigned maxMicroseconds = 30000;
            const Round round{end, flushes[random() % flushes.size()],
                              random() % 4 == 0 ? "gzip" : "none",
                              1 + static_cast<int>(random() % maxThreads),
                              static_cast<int>(random() % maxMicroseconds)};
            SCOPED_TRACE(round.text() + ", seed " + std::to_string(seed));
            if (!runRound(round, isLossy)) {
                ASSERT_LE(++hangs, maxHangs) << "the client has not ended";
                std::cerr << "the client has not ended; it does not count\n";
                --i;
            }
        }
    });
}

const std::vector<std::string> intervals{"1ms", "5ms", "200ms", "1h", "ERROR"};

// Two suites: each is a test of its own that has to end in time.
class ProcessEndWithFlush : public testing::TestWithParam<std::string> {};
class ProcessEndWithBuffer : public testing::TestWithParam<std::string> {};

TEST_P(ProcessEndWithFlush, DeliversEachLine) {
    runRounds(GetParam(), {"line"}, false);
}

TEST_P(ProcessEndWithBuffer, DeliversEachLineOrLosesTheLastOnes) {
    const auto& lossy = processEnds().lose;
    runRounds(GetParam(), intervals,
              std::find(lossy.begin(), lossy.end(), GetParam()) != lossy.end());
}

std::vector<std::string> allEnds() {
    std::vector<std::string> ends = processEnds().deliver;
    ends.insert(ends.end(), processEnds().lose.begin(), processEnds().lose.end());
    return ends;
}

std::string nameOf(const testing::TestParamInfo<std::string>& info) {
    return info.param[0] == '_' ? "underscore" + info.param.substr(1) : info.param;
}

INSTANTIATE_TEST_SUITE_P(Ways, ProcessEndWithFlush, testing::ValuesIn(allEnds()), nameOf);
INSTANTIATE_TEST_SUITE_P(Ways, ProcessEndWithBuffer, testing::ValuesIn(allEnds()), nameOf);

} // namespace
