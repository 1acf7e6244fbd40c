// The back ends under load: each of eight threads logs to its own logger and to a shared one.

#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "Collector.h"
#include "FreshFolder.h"
#include "Property.h"
#include "RotatedFiles.h"

using namespace ZOL::Framework::GenericLogger;
namespace fs = std::filesystem;

namespace {

constexpr int threads = 8;
constexpr int messagesEach = 500;

void logFrom(int thread) {
    Logger* const own = Logger::getLogger(("thread " + std::to_string(thread)).c_str());
    Logger* const shared = Logger::getLogger("all");
    for (int i = 0; i < messagesEach; ++i) {
        Logger* const logger = i % 2 == 0 ? own : shared;
        logger->info() << thread << '/' << i << std::string(60, '.');
    }
}

void logFromAllThreads() {
    std::vector<std::thread> running;
    running.reserve(threads);
    for (int thread = 0; thread < threads; ++thread) {
        running.emplace_back(logFrom, thread);
    }
    for (std::thread& thread : running) {
        thread.join();
    }
}

/// Expects complete lines, each message once, and the messages of a thread in order.
void expectAllIn(const std::string& text) {
    std::istringstream lines(text);
    std::map<int, int> next;
    for (std::string line; std::getline(lines, line);) {
        const std::size_t begin = line.find("] ");
        ASSERT_NE(begin, std::string::npos) << line;
        std::istringstream message(line.substr(begin + 2));
        int thread = -1;
        int number = -1;
        char slash = 0;
        std::string rest;
        message >> thread >> slash >> number >> rest;
        EXPECT_EQ(rest, std::string(60, '.')) << line;
        EXPECT_EQ(number, next[thread]++) << line;
    }
    EXPECT_EQ(next.size(), static_cast<std::size_t>(threads));
    for (const auto& [thread, count] : next) {
        EXPECT_EQ(count, messagesEach) << "of thread " << thread;
    }
}

TEST(UnderLoad, RotatingFileWritesEachMessageOnceAcrossRotations) {
    inFreshFolder([] {
        setProperty("RotatingFile.size", "20K");
        setProperty("RotatingFile.count", "100");
        testing::internal::CaptureStderr();
        Logger::installBackend("RotatingFile");
        logFromAllThreads();
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        std::string text;
        const auto files = filesRotatedFrom("zol.log");
        for (const fs::path& file : files) {
            EXPECT_LE(fs::file_size(file), 20480U);
            text += textOf(file);
        }
        EXPECT_GE(files.size(), 10U);
        expectAllIn(text + textOf("zol.log"));
    });
}

TEST(UnderLoad, DailyFileWritesEachMessageOnce) {
    inFreshFolder([] {
        testing::internal::CaptureStderr();
        Logger::installBackend("DailyFile");
        logFromAllThreads();
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        std::string text; // of two files around midnight
        for (const std::string& older : rotatedTexts("zol.log", ".{10}")) {
            text += older;
        }
        text += textOf("zol.log");
        expectAllIn(text);
    });
}

TEST(UnderLoad, NetworkSendsEachMessageOnce) {
    inFreshFolder([] {
        Collector collector(Collector::Kind::tcp);
        setProperty("Network.port", std::to_string(collector.port()));
        testing::internal::CaptureStderr();
        Logger::installBackend("Network");
        std::string text;
        std::thread reader([&] { text = collector.receive("the end\n"); });
        logFromAllThreads();
        Logger::getLogger("all")->info("the end");
        reader.join();
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        expectAllIn(text.substr(0, text.rfind('\n', text.size() - 2) + 1));
    });
}

} // namespace
