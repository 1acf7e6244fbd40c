// The limits of a RotatingLog together: after each line, the files in the folder keep all of them.

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "FreshFolder.h"
#include "HeldFile.h"
#include "RotatedFiles.h"
#include "files/RotatingLog.h"

using namespace ZOL::Backends;
using namespace std::chrono_literals;
namespace fs = std::filesystem;

namespace {

using Clock = RotatingLog::Clock;

constexpr std::uint64_t maxFileBytes = 100;
constexpr std::uint64_t maxBytes = 750;
constexpr std::size_t maxCount = 8;
constexpr unsigned maxDays = 2;

/// 2026-01-31 09:05:07 UTC.
Clock::time_point start() {
    return Clock::from_time_t(1769850307);
}

RotatingLogSettings withAllLimits() {
    RotatingLogSettings settings;
    settings.path = "zol.log";
    settings.maxBytes = maxFileBytes;
    settings.retention = {maxCount, maxDays, maxBytes};
    return settings;
}

/// A file of an earlier version, written last at a time.
void put(const std::string& name, std::size_t size, Clock::time_point written) {
    std::ofstream(name, std::ios::binary) << std::string(size - 1, '.') << '\n';
    const auto age = std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - written);
    fs::last_write_time(name, fs::file_time_type::clock::now() - age);
}

void putEarlierVersions() {
    for (const char* const name : {"zol.4.log", "zol.3.log", "zol.2.log", "zol.1.log"}) {
        put(name, 120, start() - 1h);
    }
    put("zol.5.log", 1, start() - 1h - 24h * 365);
    for (const char* const name : {"zol_2026-01-30.log", "zol_2026-01-31.log"}) {
        put(name, 90, start() - 1h);
    }
    put("zol_2025-12-31.log", 5000, start() - 1h);
    put("zol-important.txt", 5000, start());
}

std::uint64_t bytesOf(const std::vector<RotatedFile>& files) {
    std::uint64_t bytes = 0;
    for (const RotatedFile& file : files) {
        bytes += file.size;
    }
    return bytes;
}

/// Which limits have come close.
struct Extremes {
    std::size_t count = 0;
    std::uint64_t bytes = 0;
    std::time_t age = 0;
};

/// Expects the limits to be kept at the time of the last rotation.
void expectLimitsKept(Clock::time_point rotation, Extremes& extremes) {
    const std::vector<RotatedFile> files = rotatedFiles("zol.log");
    const std::uint64_t bytes = bytesOf(files) + fs::file_size("zol.log");
    ASSERT_LE(bytes, maxBytes);
    ASSERT_LE(files.size(), maxCount);
    extremes.bytes = std::max(extremes.bytes, bytes);
    extremes.count = std::max(extremes.count, files.size());
    for (std::size_t i = 0; i + 1 < files.size(); ++i) { // the last one is kept
        const auto age = static_cast<std::time_t>(Clock::to_time_t(rotation) - files[i].time);
        ASSERT_LE(age, maxDays * 24 * 60 * 60) << files[i].path;
        extremes.age = std::max(extremes.age, age);
    }
}

TEST(DiskBudget, IsKeptAfterEachLineTogetherWithTheOtherLimits) {
    inFreshFolder([] {
        putEarlierVersions();
        testing::internal::CaptureStderr();
        std::minstd_rand random(1);
        auto log = std::make_unique<RotatingLog>("Test", withAllLimits());
        Clock::time_point now = start();
        Clock::time_point rotation = now;
        Extremes extremes;
        constexpr int lines = 1500;
        for (int i = 0; i < lines; ++i) {
            // Phases of long lines, of short ones, and of few a day.
            const int phase = i / 100 % 3;
            const std::size_t length = phase == 0   ? 90 + random() % 10
                                       : phase == 1 ? 1 + random() % 60
                                                    : 55;
            now += phase == 2 ? 5h : 1s;
            if (i % 37 == 0) {
                log = nullptr; // frees the lock
                log = std::make_unique<RotatingLog>("Test", withAllLimits());
                rotation = now;
            }
            const auto before = filesRotatedFrom("zol.log");
            log->write(std::string(length, 'x') + "\n", now);
            rotation = filesRotatedFrom("zol.log") != before ? now : rotation;
            expectLimitsKept(rotation, extremes);
            ASSERT_FALSE(testing::Test::HasFatalFailure()) << "after line " << i;
        }
        EXPECT_EQ(extremes.count, maxCount);
        EXPECT_GT(extremes.bytes, maxBytes - maxFileBytes);
        EXPECT_GT(extremes.age, (maxDays * 24 - 12) * 60 * 60);
        EXPECT_EQ(fs::file_size("zol-important.txt"), 5000U);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    });
}

TEST(DiskBudget, IsKeptWithALineThatIsLongerThanAFile) {
    inFreshFolder([] {
        RotatingLogSettings settings = withAllLimits();
        settings.retention = {0, 0, maxBytes};
        RotatingLog log("Test", settings);
        for (int i = 0; i < 10; ++i) {
            log.write(std::string(maxFileBytes - 1, 'x') + "\n", start() + i * 1s);
        }
        log.write(std::string(4 * maxFileBytes, 'x') + "\n", start() + 10s);
        EXPECT_LE(bytesOf(rotatedFiles("zol.log")) + fs::file_size("zol.log"), maxBytes);
        EXPECT_GT(filesRotatedFrom("zol.log").size(), 1U) << "no more is removed than needed";
    });
}

TEST(DiskBudget, IsExceededByAFileThatCannotBeRemovedAndByNoOther) {
    inFreshFolder([] {
        HeldFile::prepare();
        const std::string heldName = "zol.3.log";
        putEarlierVersions();
        testing::internal::CaptureStderr();
        RotatingLogSettings settings = withAllLimits();
        settings.retention.count = 3;
        constexpr int lines = 50;
        {
            const HeldFile held(heldName);
            RotatingLog log("Test", settings);
            for (int i = 0; i < lines; ++i) {
                log.write(std::to_string(i) + std::string(90, '.') + "\n", start() + i * 1s);
                std::vector<RotatedFile> files = rotatedFiles("zol.log");
                ASSERT_LE(files.size(), 4U);
                ASSERT_LE(bytesOf(files) + fs::file_size("zol.log"), maxBytes + 120);
            }
        }
        EXPECT_TRUE(fs::exists(heldName));
        std::string text;
        for (const std::string& rotated : rotatedTexts("zol.log")) {
            text += rotated;
        }
        std::string expected;
        for (int i = lines - 4; i < lines; ++i) {
            expected += std::to_string(i) + std::string(90, '.') + "\n";
        }
        EXPECT_EQ(text + textOf("zol.log"), expected);
        const std::string report = testing::internal::GetCapturedStderr();
        EXPECT_EQ(report.find("ZOL back end Test: cannot remove " + heldName + ": "), 0U) << report;
        EXPECT_EQ(std::count(report.begin(), report.end(), '\n'), 1) << report;
    });
}

} // namespace
