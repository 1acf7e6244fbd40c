#include "files/RotatedName.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using namespace ZOL::Backends;

namespace fs = std::filesystem;

namespace ZOL::Backends {

bool operator==(const RotatedName& left, const RotatedName& right) {
    return left.time == right.time && left.counter == right.counter && left.day == right.day &&
           left.number == right.number && left.isCompressed == right.isCompressed;
}

std::ostream& operator<<(std::ostream& stream, const RotatedName& name) {
    return stream << "time " << name.time << ", counter " << name.counter << ", day \"" << name.day
                  << "\", number " << name.number << (name.isCompressed ? ", compressed" : "");
}

} // namespace ZOL::Backends

namespace {

using Names = std::vector<RotatedName>;

constexpr std::time_t january31At090507 = 1769850307; // date -u -d '2026-01-31 09:05:07' +%s
constexpr std::time_t january31 = 1769817600;         // date -u -d 2026-01-31 +%s
constexpr std::time_t oneDay = std::time_t{24} * 60 * 60;

RotatedName rotatedAt(std::time_t time, unsigned counter = 0, std::string day = "") {
    RotatedName name;
    name.time = time;
    name.counter = counter;
    name.day = std::move(day);
    return name;
}

RotatedName numbered(unsigned long number) {
    RotatedName name;
    name.number = number;
    return name;
}

std::optional<RotatedName> parsed(const std::string& name, const std::string& live = "zol.log") {
    return RotatedName::parse(fs::u8path(name), fs::u8path(live));
}

void expectNoRotatedFiles(const std::vector<std::string>& names,
                          const std::string& live = "zol.log") {
    for (const std::string& name : names) {
        EXPECT_EQ(parsed(name, live), std::nullopt) << name << " of " << live;
    }
}

/// Expects that a name of the live file is made and read as expected.
void expectName(const std::string& live, const RotatedName& name, const std::string& expected) {
    const fs::path made = name.pathOf(fs::u8path(live));
    EXPECT_EQ(made.u8string(), expected);
    EXPECT_EQ(RotatedName::parse(made.filename(), fs::u8path(live)), name) << expected;
}

TEST(RotatedName, HoldsTheTimeInUtcAndTheCounter) {
    expectName("zol.log", rotatedAt(january31At090507), "zol.20260131T090507Z.000.log");
    expectName("zol.log", rotatedAt(january31, 7), "zol.20260131T000000Z.007.log");
    expectName("zol.log", rotatedAt(january31 + oneDay - 1, RotatedName::maxCounter),
               "zol.20260131T235959Z.999.log");
}

TEST(RotatedName, MayHoldADayInFront) {
    expectName("zol.log", rotatedAt(january31At090507, 12, "2026-01-30"),
               "zol_2026-01-30.20260131T090507Z.012.log");
}

TEST(RotatedName, IsInTheFolderOfTheLiveFile) {
    EXPECT_EQ(rotatedAt(january31).pathOf(fs::path("logs") / "zol.log"),
              fs::path("logs") / "zol.20260131T000000Z.000.log");
}

TEST(RotatedName, NeedsNoExtension) {
    expectName("zol", rotatedAt(january31), "zol.20260131T000000Z.000");
    expectName("zol", rotatedAt(january31, 0, "2026-01-30"), "zol_2026-01-30.20260131T000000Z.000");
    EXPECT_EQ(parsed("zol.3", "zol"), numbered(3));
}

TEST(RotatedName, MayBeHidden) {
    expectName(".zol", rotatedAt(january31), ".zol.20260131T000000Z.000");
    expectName(".zol.log", rotatedAt(january31), ".zol.20260131T000000Z.000.log");
}

TEST(RotatedName, MayHaveSeveralDots) {
    expectName("zol.orders.log", rotatedAt(january31), "zol.orders.20260131T000000Z.000.log");
    expectNoRotatedFiles({"zol.orders.20260131T000000Z.000.log"}, "zol.log");
}

TEST(RotatedName, MayBeBeyondAscii) {
    const std::string stem = "\u0436\u0443\u0440\u043d\u0430\u043b-\u65e5\u672c-\U0001F4D3";
    expectName(stem + ".\u00e4\u00f6", rotatedAt(january31),
               stem + ".20260131T000000Z.000.\u00e4\u00f6");
    // Arabic and fullwidth digits
    expectNoRotatedFiles({"zol.\u0663.log", "zol.2026013\uff11T090507Z.000.log"});
}

TEST(RotatedName, HoldsEachDayOfManyYears) {
    constexpr std::time_t years = 135; // beyond 2100, which is no leap year
    for (std::time_t time = 0; time < years * 365 * oneDay; time += oneDay) {
        const RotatedName name = rotatedAt(time);
        const fs::path path = name.pathOf("zol.log");
        ASSERT_EQ(RotatedName::parse(path, "zol.log"), name) << path;
    }
}

TEST(RotatedName, OfEarlierVersionsIsRead) {
    EXPECT_EQ(parsed("zol.3.log"), numbered(3));
    EXPECT_EQ(parsed("zol.1.log"), numbered(1));
    EXPECT_EQ(parsed("zol.120.log"), numbered(120));
    EXPECT_EQ(parsed("zol_2026-01-31.log"), rotatedAt(january31, 0, "2026-01-31"));
}

TEST(RotatedName, MayBeThatOfACompressedFile) {
    RotatedName name = rotatedAt(january31At090507, 12, "2026-01-30");
    name.isCompressed = true;
    const std::string text = "zol_2026-01-30.20260131T090507Z.012.log.gz";
    EXPECT_EQ(name.pathOf("zol.log"), fs::path(text));
    EXPECT_EQ(parsed(text), name);
    EXPECT_TRUE(parsed("zol.3.log.gz").value().isCompressed);
    EXPECT_TRUE(parsed("zol.3.gz", "zol").value().isCompressed);
    EXPECT_FALSE(parsed("zol.3.gz", "zol.gz").value().isCompressed);
    EXPECT_TRUE(parsed("zol.3.gz.gz", "zol.gz").value().isCompressed);
    RotatedName uncompressed = name;
    uncompressed.isCompressed = false;
    EXPECT_TRUE(uncompressed.isOlderThan(name));
    EXPECT_FALSE(name.isOlderThan(uncompressed));
}

TEST(RotatedName, IsNotThatOfTheLiveOrOfAnotherFile) {
    expectNoRotatedFiles({"zol.log", "zol", "", "zol-important.log", "zol_important.log",
                          "zol.important.log", "other.20260131T090507Z.000.log",
                          "ZOL.20260131T090507Z.000.log", "azol.20260131T090507Z.000.log",
                          "zol2.20260131T090507Z.000.log", "zol20260131T090507Z.000.log",
                          "zol..log", "zol_.log", "zol...log", "zo.3.log"});
    expectNoRotatedFiles({"zol", "zol.", "zol.20260131T090507Z.000.log", "zol.3.log"}, "zol");
}

TEST(RotatedName, EndsWithTheExtension) {
    expectNoRotatedFiles({"zol.20260131T090507Z.000.log.bak", "zol.20260131T090507Z.000.log.gz.gz",
                          "zol.20260131T090507Z.000.log.gz.tmp", "zol.20260131T090507Z.000.log~",
                          "zol.20260131T090507Z.000.txt", "zol.20260131T090507Z.000.LOG",
                          "zol.20260131T090507Z.000", "zol.20260131T090507Z.000log",
                          "zol.3.log.bak", "zol.3.log.gzip", "zol.3.log.GZ", "zol.log.gz", "zol.3",
                          "zol_2026-01-31.log.bak", "zol_2026-01-31"});
    expectNoRotatedFiles({"zol.20260131T090507Z.000.bz2", "zol.3.xz", "zol.gz"}, "zol");
}

TEST(RotatedName, HasNothingElseBetweenItsParts) {
    expectNoRotatedFiles({"zol.20260131T090507Z.000.bak.log", "zol.20260131T090507Z.000x.log",
                          "zol.20260131T090507Z.000..log", "zol.3x.log", "zol.3.bak.log",
                          "zol.3..log", "zol_2026-01-31x.log", "zol_2026-01-31..log",
                          "zol_2026-01-31.bak.log", "zol_2026-01-31_20260131T090507Z.000.log"});
}

TEST(RotatedName, HasEachPart) {
    expectNoRotatedFiles({"zol.20260131T090507.000.log", "zol.20260131T090507z.000.log",
                          "zol.20260131t090507Z.000.log", "zol.20260131-090507Z.000.log",
                          "zol.20260131T090507Z.log", "zol.20260131T090507Z..log",
                          "zol.20260131T090507Z000.log", "zol.20260131T0905Z.000.log",
                          "zol.20260131T.log", "zol.T090507Z.000.log",
                          "zol.2026-01-31T090507Z.000.log", "zol_20260131.log", "zol_2026-1-31.log",
                          "zol_2026-01-1.log", "zol_26-01-31.log", "zol_2026-0131.log"});
}

TEST(RotatedName, HoldsADayThatExists) {
    for (const std::string text : {"0101", "0131", "0228", "0430", "1231"}) {
        EXPECT_TRUE(parsed("zol.2026" + text + "T090507Z.000.log")) << text;
        EXPECT_TRUE(parsed("zol_2026-" + text.substr(0, 2) + "-" + text.substr(2) + ".log"))
            << text;
    }
    for (const std::string text :
         {"0001", "1301", "0100", "0132", "0229", "0230", "0431", "0631", "0931", "1131", "1232"}) {
        const std::string written = text.substr(0, 2) + "-" + text.substr(2);
        expectNoRotatedFiles({"zol.2026" + text + "T090507Z.000.log",
                              "zol_2026-" + written + ".log",
                              "zol_2026-" + written + ".20260131T090507Z.000.log"});
    }
}

TEST(RotatedName, HoldsTheLastDayOfFebruaryOnlyInLeapYears) {
    for (const std::string year : {"2024", "2028", "2000", "2400"}) {
        EXPECT_TRUE(parsed("zol." + year + "0229T090507Z.000.log")) << year;
        EXPECT_TRUE(parsed("zol_" + year + "-02-29.log")) << year;
    }
    for (const std::string year : {"2026", "2025", "2100", "2200"}) {
        expectNoRotatedFiles(
            {"zol." + year + "0229T090507Z.000.log", "zol_" + year + "-02-29.log"});
    }
    expectNoRotatedFiles({"zol.20240230T090507Z.000.log", "zol_2024-02-30.log"});
}

TEST(RotatedName, BeginsWithTheYear1970) {
    EXPECT_EQ(parsed("zol.19700101T000000Z.000.log"), rotatedAt(0));
    expectNoRotatedFiles(
        {"zol.19691231T235959Z.000.log", "zol_1969-12-31.log", "zol.00000101T000000Z.000.log"});
}

TEST(RotatedName, HoldsATimeOfDayThatExists) {
    EXPECT_EQ(parsed("zol.20260131T235959Z.000.log"), rotatedAt(january31 + oneDay - 1));
    expectNoRotatedFiles({"zol.20260131T240000Z.000.log", "zol.20260131T006000Z.000.log",
                          "zol.20260131T000060Z.000.log"});
}

TEST(RotatedName, HasACounterOfThreeDigits) {
    expectNoRotatedFiles({"zol.20260131T090507Z.0.log", "zol.20260131T090507Z.00.log",
                          "zol.20260131T090507Z.0000.log", "zol.20260131T090507Z.1000.log"});
}

TEST(RotatedName, HasNoSignsAndBlanksAmongItsDigits) {
    for (const std::string sign : {"+", "-", " "}) {
        expectNoRotatedFiles(
            {"zol." + sign + "1.log", "zol." + sign + "0260131T090507Z.000.log",
             "zol.2026" + sign + "131T090507Z.000.log", "zol.202601" + sign + "1T090507Z.000.log",
             "zol.20260131T" + sign + "90507Z.000.log", "zol.20260131T09" + sign + "507Z.000.log",
             "zol.20260131T0905" + sign + "7Z.000.log", "zol.20260131T090507Z." + sign + "01.log",
             "zol.20260131T" + sign + "00507Z.000.log", "zol.20260131T090507Z." + sign + "00.log",
             "zol.20260131T090507Z.0" + sign + "1.log", "zol_2026-" + sign + "1-31.log",
             "zol_2026-01-" + sign + "1.log"});
    }
}

TEST(RotatedName, HasANumberFrom1OnWithoutZerosInFront) {
    expectNoRotatedFiles({"zol.0.log", "zol.00.log", "zol.01.log", "zol.1001.log", "zol.2025.log",
                          "zol.20260131.log", "zol.0x1.log", "zol.1e3.log",
                          "zol.99999999999999999999999999.log"});
}

TEST(RotatedName, HoldsADayOrANumberButNotBoth) {
    expectNoRotatedFiles({"zol_2026-01-31.3.log", "zol.2026-01-31.log", "zol.3_2026-01-31.log",
                          "zol.3.20260131T090507Z.000.log"});
}

TEST(RotatedName, IsOrderedByNumberThenTimeThenCounter) {
    // The day in front does not count.
    const Names oldestFirst{numbered(10),
                            numbered(2),
                            numbered(1),
                            rotatedAt(0),
                            rotatedAt(january31 - 1, 999),
                            rotatedAt(january31, 0, "2026-01-31"),
                            rotatedAt(january31, 1, "2026-01-30"),
                            rotatedAt(january31, 2),
                            rotatedAt(january31 + 1, 0, "2026-01-01")};
    for (std::size_t left = 0; left < oldestFirst.size(); ++left) {
        for (std::size_t right = 0; right < oldestFirst.size(); ++right) {
            EXPECT_EQ(oldestFirst[left].isOlderThan(oldestFirst[right]), left < right)
                << oldestFirst[left] << "; " << oldestFirst[right];
        }
    }
}

} // namespace
