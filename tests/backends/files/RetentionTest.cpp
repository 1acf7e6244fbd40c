#include "files/Retention.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "FreshFolder.h"

using namespace ZOL::Backends;
namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

constexpr std::time_t now = 1769850307;
constexpr std::time_t day = 24 * 60 * 60;
constexpr std::uint64_t size = 10;

/// Files that were rotated so many seconds ago, named by that.
std::vector<RotatedFile> filesOfAge(const std::vector<std::time_t>& ages) {
    std::vector<RotatedFile> files;
    for (const std::time_t age : ages) {
        RotatedFile file;
        file.name.time = now - age;
        file.path = fs::path("logs") / std::to_string(age);
        file.size = size;
        files.push_back(file);
    }
    return files;
}

RetentionLimits limits(std::size_t count, unsigned days, std::uint64_t bytes) {
    RetentionLimits result;
    result.count = count;
    result.days = days;
    result.bytes = bytes;
    return result;
}

Names expired(const std::vector<std::time_t>& ages, const RetentionLimits& retention,
              std::uint64_t liveBytes = 0, const fs::path& lastRotated = {}) {
    Names names;
    for (const RotatedFile& file :
         expiredFiles(filesOfAge(ages), lastRotated, liveBytes, now, retention)) {
        names.push_back(file.path.filename().string());
    }
    return names;
}

TEST(Retention, KeepsEverythingWithoutALimit) {
    EXPECT_FALSE(limits(0, 0, 0).isAny());
    EXPECT_EQ(expired({1000 * day, 2, 1}, limits(0, 0, 0), 1000000), Names{});
    EXPECT_TRUE(limits(1, 0, 0).isAny());
    EXPECT_TRUE(limits(0, 1, 0).isAny());
    EXPECT_TRUE(limits(0, 0, 1).isAny());
}

TEST(Retention, KeepsTheNewestOfANumber) {
    EXPECT_EQ(expired({3, 2, 1}, limits(3, 0, 0)), Names{});
    EXPECT_EQ(expired({4, 3, 2, 1}, limits(3, 0, 0)), Names{"4"});
    EXPECT_EQ(expired({5, 4, 3, 2, 1}, limits(3, 0, 0)), (Names{"5", "4"}));
}

TEST(Retention, KeepsFilesOfTheLastDaysWhateverGapsThereAre) {
    EXPECT_EQ(expired({400 * day, 2 * day + 1, 2 * day, 1}, limits(0, 2, 0)),
              (Names{std::to_string(400 * day), std::to_string(2 * day + 1)}));
}

TEST(Retention, KnowsNoAgeOfNumberedFiles) {
    std::vector<RotatedFile> files = filesOfAge({0, 1});
    files[0].name = *RotatedName::parse("zol.1.log", "zol.log");
    EXPECT_TRUE(expiredFiles(files, {}, 0, now, limits(0, 1, 0)).empty());
    EXPECT_EQ(expiredFiles(files, {}, 0, now, limits(1, 1, 0)).size(), 1U);
}

TEST(Retention, KeepsTheNewestOfANumberOfBytes) {
    EXPECT_EQ(expired({3, 2, 1}, limits(0, 0, 3 * size)), Names{});
    EXPECT_EQ(expired({3, 2, 1}, limits(0, 0, 3 * size - 1)), Names{"3"});
    EXPECT_EQ(expired({3, 2, 1}, limits(0, 0, 3 * size), 1), Names{"3"}) << "with the live file";
    EXPECT_EQ(expired({3, 2, 1}, limits(0, 0, 3 * size), size + 1), (Names{"3", "2"}));
}

TEST(Retention, AppliesAllLimits) {
    EXPECT_EQ(expired({9 * day, 4, 3, 2, 1}, limits(3, 1, 2 * size)),
              (Names{std::to_string(9 * day), "4", "3"}));
    EXPECT_EQ(expired({9 * day, 8 * day, 1}, limits(2, 10, 0)), Names{std::to_string(9 * day)})
        << "what is removed counts no more";
}

TEST(Retention, NeverRemovesTheFileThatWasRotatedLast) {
    EXPECT_EQ(expired({2, 1}, limits(0, 0, 1), 100), Names{"2"}) << "the newest, if none is named";
    EXPECT_EQ(expired({900 * day}, limits(0, 1, 0)), Names{});
    EXPECT_EQ(expired({2, 1}, limits(1, 0, 0), 0, fs::path("elsewhere") / "2"), Names{"1"});
    EXPECT_EQ(expired({}, limits(1, 1, 1), 100), Names{});
}

TEST(Retention, FindsRotatedFilesOldestFirst) {
    inFreshFolder([] {
        EXPECT_TRUE(rotatedFiles("missing/zol.log").empty());
        fs::create_directory("logs");
        for (const char* const name :
             {"zol.20260131T090507Z.000.log", "zol_2026-01-30.log", "zol.1.log", "zol.2.log",
              "zol.log", "zol.log.lock", "zol-important.log", "other.1.log"}) {
            std::ofstream(fs::path("logs") / name) << name;
        }
        fs::create_directory("logs/zol.3.log");
        Names names;
        for (const RotatedFile& file : rotatedFiles("logs/zol.log")) {
            EXPECT_EQ(file.path.parent_path(), "logs");
            EXPECT_EQ(file.size, file.path.filename().string().size());
            names.push_back(file.path.filename().string());
        }
        EXPECT_EQ(names, (Names{"zol.2.log", "zol.1.log", "zol_2026-01-30.log",
                                "zol.20260131T090507Z.000.log"}));
        fs::current_path("logs");
        EXPECT_EQ(rotatedFiles("zol.log").size(), 4U) << "in the current folder";
    });
}

} // namespace
