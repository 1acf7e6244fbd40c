#include "files/Retention.h"

#include <chrono>
#include <fstream>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "FreshFolder.h"

using namespace ZOL::Backends;

namespace fs = std::filesystem;

namespace {

using Texts = std::vector<std::string>;

constexpr std::time_t day = std::time_t{24} * 60 * 60;
constexpr std::time_t now = 1769850307; // 2026-01-31 09:05:07 UTC
constexpr std::uint64_t size = 100;     // of each file of filesOfAges()
const RetentionLimits noLimits;

RetentionLimits limitOfCount(std::size_t count) {
    RetentionLimits limits;
    limits.count = count;
    return limits;
}

RetentionLimits limitOfDays(unsigned days) {
    RetentionLimits limits;
    limits.days = days;
    return limits;
}

RetentionLimits limitOfBytes(std::uint64_t bytes) {
    RetentionLimits limits;
    limits.bytes = bytes;
    return limits;
}

/// Files that were rotated so many seconds ago, each named by its position: "0", "1" and so on.
std::vector<RotatedFile> filesOfAges(const std::vector<std::time_t>& agesOldestFirst) {
    std::vector<RotatedFile> files;
    for (const std::time_t age : agesOldestFirst) {
        RotatedFile file;
        file.name.time = now - age;
        file.time = file.name.time;
        file.path = fs::path("logs") / std::to_string(files.size());
        file.size = size;
        files.push_back(file);
    }
    return files;
}

std::vector<RotatedFile> files(std::size_t count) {
    std::vector<std::time_t> ages;
    for (std::size_t age = count; age > 0; --age) {
        ages.push_back(static_cast<std::time_t>(age));
    }
    return filesOfAges(ages);
}

Texts namesOf(const std::vector<RotatedFile>& files) {
    Texts names;
    for (const RotatedFile& file : files) {
        names.push_back(file.path.filename().u8string());
    }
    return names;
}

/// The names of the files that exceed the limits.
Texts expired(const std::vector<RotatedFile>& files, const RetentionLimits& limits,
              std::uint64_t liveBytes = 0, const fs::path& lastRotated = {}) {
    return namesOf(expiredFiles(files, lastRotated, liveBytes, now, limits));
}

TEST(Retention, WithoutLimitsKeepsAll) {
    constexpr std::time_t tenYears = 3650 * day;
    EXPECT_EQ(expired(filesOfAges({tenYears, 2, 1}), noLimits, 1'000'000'000'000), Texts{});
}

TEST(Retention, KeepsNothingOfNothing) {
    EXPECT_EQ(expired({}, {1, 1, 1}, 100, "zol.20260131T090507Z.000.log"), Texts{});
    EXPECT_EQ(expired({}, {1, 1, 1}, 100), Texts{});
}

TEST(Retention, KeepsSoManyFiles) {
    EXPECT_EQ(expired(files(3), limitOfCount(4)), Texts{});
    EXPECT_EQ(expired(files(3), limitOfCount(3)), Texts{});
    EXPECT_EQ(expired(files(3), limitOfCount(2)), Texts{"0"});
    EXPECT_EQ(expired(files(3), limitOfCount(1)), (Texts{"0", "1"}));
}

TEST(Retention, CountsFilesOfAnyAge) {
    EXPECT_EQ(expired(filesOfAges({900 * day, 400 * day, 90 * day, 1}), limitOfCount(3)),
              Texts{"0"});
}

TEST(Retention, KeepsSoManyDays) {
    EXPECT_EQ(expired(filesOfAges({2 * day + 1, 2 * day, 2 * day - 1, 0}), limitOfDays(2)),
              Texts{"0"});
    EXPECT_EQ(expired(filesOfAges({day + 1, day, 0}), limitOfDays(1)), Texts{"0"});
}

TEST(Retention, RemovesFilesBeforeAGapOfMonths) {
    EXPECT_EQ(expired(filesOfAges({201 * day, 200 * day, 100 * day, 1}), limitOfDays(14)),
              (Texts{"0", "1", "2"}));
}

TEST(Retention, KeepsFilesOfTheFuture) {
    EXPECT_EQ(expired(filesOfAges({-day, -400 * day, -401 * day}), limitOfDays(1)), Texts{});
}

TEST(Retention, TakesAnyNumberOfDays) {
    constexpr unsigned max = std::numeric_limits<unsigned>::max();
    for (const unsigned days : {20'000U, 50'000U, max}) { // 50,000 days are over 2^32 seconds
        EXPECT_EQ(expired(filesOfAges({20'000 * day, 1}), limitOfDays(days)), Texts{}) << days;
    }
}

TEST(Retention, KeepsSoManyBytes) {
    EXPECT_EQ(expired(files(3), limitOfBytes(3 * size)), Texts{});
    EXPECT_EQ(expired(files(3), limitOfBytes(3 * size - 1)), Texts{"0"});
    EXPECT_EQ(expired(files(3), limitOfBytes(2 * size)), Texts{"0"});
    EXPECT_EQ(expired(files(3), limitOfBytes(2 * size - 1)), (Texts{"0", "1"}));
}

TEST(Retention, CountsTheBytesOfTheLiveFile) {
    EXPECT_EQ(expired(files(3), limitOfBytes(3 * size + 50), 50), Texts{});
    EXPECT_EQ(expired(files(3), limitOfBytes(3 * size + 49), 50), Texts{"0"});
    EXPECT_EQ(expired(files(3), limitOfBytes(3 * size), 5 * size), (Texts{"0", "1"}));
}

TEST(Retention, CountsTheBytesOfEachFile) {
    std::vector<RotatedFile> sized = files(4);
    sized[0].size = 5'000'000'000;
    sized[1].size = 1;
    sized[2].size = 10;
    sized[3].size = 100;
    EXPECT_EQ(expired(sized, limitOfBytes(5'000'000'111)), Texts{});
    EXPECT_EQ(expired(sized, limitOfBytes(5'000'000'110)), Texts{"0"});
    EXPECT_EQ(expired(sized, limitOfBytes(111)), Texts{"0"});
    EXPECT_EQ(expired(sized, limitOfBytes(110)), (Texts{"0", "1"}));
    EXPECT_EQ(expired(sized, limitOfBytes(109)), (Texts{"0", "1", "2"}));
}

TEST(Retention, AppliesEachLimit) {
    const std::vector<RotatedFile> four = filesOfAges({4 * day, 3 * day, 2 * day, day});
    EXPECT_EQ(expired(four, {4, 4, 4 * size}), Texts{});
    EXPECT_EQ(expired(four, {3, 4, 4 * size}), Texts{"0"}) << "by count";
    EXPECT_EQ(expired(four, {4, 3, 4 * size}), Texts{"0"}) << "by days";
    EXPECT_EQ(expired(four, {4, 4, 3 * size}), Texts{"0"}) << "by bytes";
    EXPECT_EQ(expired(four, {3, 3, 3 * size}), Texts{"0"}) << "each file counts once";
    EXPECT_EQ(expired(four, {3, 2, 4 * size}), (Texts{"0", "1"})) << "by the strictest limit";
}

TEST(Retention, KeepsTheNewestFile) {
    EXPECT_EQ(expired(filesOfAges({400 * day}), {1, 1, 1}, 1000), Texts{});
    EXPECT_EQ(expired(filesOfAges({401 * day, 400 * day}), {1, 1, 1}, 1000), Texts{"0"});
}

TEST(Retention, KeepsTheLastRotatedFileEvenIfItIsNotTheNewestByName) {
    const std::vector<RotatedFile> three = filesOfAges({30 * day, 29 * day, 28 * day});
    EXPECT_EQ(expired(three, {1, 1, 1}, 1000, fs::path("logs") / "0"), (Texts{"1", "2"}));
    EXPECT_EQ(expired(three, {1, 1, 1}, 1000, fs::path("logs") / "1"), (Texts{"0", "2"}));
    EXPECT_EQ(expired(three, {1, 1, 1}, 1000, fs::path("logs") / "2"), (Texts{"0", "1"}));
    EXPECT_EQ(expired(three, limitOfCount(2), 0, fs::path("logs") / "0"), Texts{"1"});
}

TEST(Retention, FindsTheLastRotatedFileByItsName) {
    EXPECT_EQ(expired(files(2), limitOfCount(1), 0, fs::path("elsewhere") / "0"), Texts{"1"});
}

void write(const fs::path& path, const std::string& text = "") {
    std::ofstream(path, std::ios::binary) << text;
    ASSERT_TRUE(fs::is_regular_file(path)) << path;
}

TEST(RotatedFiles, AreThoseOfOneLiveFileTheOldestFirst) {
    inFreshFolder([] {
        const Texts oldestFirst{"zol.10.log",
                                "zol.9.log",
                                "zol_2026-01-30.log",
                                "zol.20260131T000000Z.000.log",
                                "zol.20260131T000000Z.001.log",
                                "zol.20260131T000000Z.002.log.gz",
                                "zol_2026-01-30.20260131T000001Z.000.log",
                                "zol.20260131T000002Z.000.log"};
        for (const char* other :
             {"zol.log", "zol-important.log", "zol.20260131T000000Z.000.log.gz.tmp", "zol.log.lock",
              "orders.20260131T000000Z.000.log"}) {
            write(other);
        }
        for (const std::string& name : oldestFirst) {
            write(name);
        }
        EXPECT_EQ(namesOf(rotatedFiles("zol.log")), oldestFirst);
    });
}

TEST(RotatedFiles, HaveNamePathAndSize) {
    inFreshFolder([] {
        fs::create_directory("logs");
        const fs::path path = fs::path("logs") / "zol_2026-01-30.20260131T090507Z.012.log";
        write(path, "12345");
        write("zol.3.log");
        const std::vector<RotatedFile> found = rotatedFiles(fs::path("logs") / "zol.log");
        ASSERT_EQ(found.size(), 1U) << "only those in the folder of the live file";
        EXPECT_EQ(found.front().path, path);
        EXPECT_EQ(found.front().size, 5U);
        EXPECT_EQ(found.front().name.time, now);
        EXPECT_EQ(found.front().name.counter, 12U);
        EXPECT_EQ(found.front().name.day, "2026-01-30");
    });
}

TEST(RotatedFiles, HaveTheTimeInTheirNamesOrOfTheirLastWrite) {
    inFreshFolder([] {
        constexpr std::chrono::hours age(48);
        constexpr double tolerance = 60;
        for (const char* const name : {"zol.2.log", "zol.1.log", "zol.20260131T090507Z.000.log"}) {
            write(name);
            fs::last_write_time(name, fs::file_time_type::clock::now() - age);
        }
        const std::vector<RotatedFile> files = rotatedFiles("zol.log");
        ASSERT_EQ(files.size(), 3U);
        const auto written = static_cast<double>(std::time(nullptr) - 2 * day);
        EXPECT_NEAR(static_cast<double>(files[0].time), written, tolerance);
        EXPECT_NEAR(static_cast<double>(files[1].time), written, tolerance);
        EXPECT_EQ(files[2].time, now);
    });
}

TEST(RotatedFiles, AreNoFolders) {
    inFreshFolder([] {
        fs::create_directory("zol.20260131T000000Z.000.log");
        write(fs::path("zol.20260131T000000Z.000.log") / "zol.3.log");
        write("zol.20260131T000001Z.000.log");
        EXPECT_EQ(namesOf(rotatedFiles("zol.log")), Texts{"zol.20260131T000001Z.000.log"});
    });
}

TEST(RotatedFiles, AreNoneInAMissingFolder) {
    inFreshFolder([] {
        EXPECT_EQ(namesOf(rotatedFiles(fs::path("missing") / "zol.log")), Texts{});
        write("file");
        EXPECT_EQ(namesOf(rotatedFiles(fs::path("file") / "zol.log")), Texts{});
    });
}

} // namespace
