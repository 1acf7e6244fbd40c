#include "files/RotatedName.h"

#include <string>
#include <utility>

#include <gtest/gtest.h>

using namespace ZOL::Backends;
namespace fs = std::filesystem;

namespace {

constexpr std::time_t time = 1769850307; // 2026-01-31 09:05:07 UTC

RotatedName nameOf(std::time_t at, unsigned counter, const std::string& day = "") {
    RotatedName name;
    name.time = at;
    name.counter = counter;
    name.day = day;
    return name;
}

TEST(RotatedName, HasTheTimeAndTheCounterBeforeTheExtension) {
    EXPECT_EQ(nameOf(time, 0).pathOf("zol.log"), fs::path("zol.20260131T090507Z.000.log"));
    EXPECT_EQ(nameOf(time, 999).pathOf(fs::path("logs") / "zol.log"),
              fs::path("logs") / "zol.20260131T090507Z.999.log");
    EXPECT_EQ(nameOf(time, 7).pathOf("zol"), fs::path("zol.20260131T090507Z.007"));
    EXPECT_EQ(nameOf(time, 7).pathOf(".zol"), fs::path(".zol.20260131T090507Z.007"));
    EXPECT_EQ(nameOf(time, 7).pathOf("a.b.log"), fs::path("a.b.20260131T090507Z.007.log"));
    EXPECT_EQ(nameOf(0, 0).pathOf("zol.log"), fs::path("zol.19700101T000000Z.000.log"));
}

TEST(RotatedName, HasTheDayInFront) {
    EXPECT_EQ(nameOf(time, 0, "2026-01-30").pathOf("zol.log"),
              fs::path("zol_2026-01-30.20260131T090507Z.000.log"));
}

TEST(RotatedName, IsReadAsItWasMade) {
    for (const char* const live : {"zol.log", "zol", ".zol", "a.b.log", "\xC3\xA4.log"}) {
        for (const std::time_t at : {std::time_t{0}, time, std::time_t{951782400}, // 2000-02-29
                                     std::time_t{1709164799}, std::time_t{4102444799}}) {
            for (const std::string day : {"", "2026-01-30"}) {
                const fs::path path = fs::u8path(live);
                const fs::path made = nameOf(at, 42, day).pathOf(path);
                const auto name = RotatedName::parse(made.filename(), path);
                ASSERT_TRUE(name) << made;
                EXPECT_EQ(name->time, at);
                EXPECT_EQ(name->counter, 42U);
                EXPECT_EQ(name->day, day);
                EXPECT_EQ(name->number, 0U);
            }
        }
    }
}

TEST(RotatedName, IsThatOfAnEarlierVersion) {
    const auto numbered = RotatedName::parse("zol.12.log", "zol.log");
    ASSERT_TRUE(numbered);
    EXPECT_EQ(numbered->number, 12U);
    EXPECT_TRUE(RotatedName::parse("zol.1000.log", "zol.log"));
    const auto daily = RotatedName::parse("zol_2026-01-31.log", "zol.log");
    ASSERT_TRUE(daily);
    EXPECT_EQ(daily->day, "2026-01-31");
    EXPECT_EQ(daily->time, 1769817600);
}

TEST(RotatedName, IsNoOtherFile) {
    for (const char* const other : {"zol.log",
                                    "zol-important.log",
                                    "zol..log",
                                    "zol.0.log",
                                    "zol.03.log",
                                    "zol.-3.log",
                                    "zol.1001.log",
                                    "zol.2026.log",
                                    "zol.20260131.log",
                                    "zol.99999999999999999999999.log",
                                    "zol.\xFF.log",
                                    "zol.3.txt",
                                    "zol.3.log.bak",
                                    "azol.3.log",
                                    "zol_2026-01-31.3.log",
                                    "zol_2026-01-31",
                                    "zol_2026-1-31.log",
                                    "zol_2026-13-01.log",
                                    "zol_2026-00-01.log",
                                    "zol_2026-04-31.log",
                                    "zol_2026-02-29.log",
                                    "zol_2100-02-29.log",
                                    "zol_2026-01-00.log",
                                    "zol.20260131T090507Z.log",
                                    "zol.20260131T090507Z.00.log",
                                    "zol.20260131T090507Z.0000.log",
                                    "zol.20260131T090507Z.-01.log",
                                    "zol.20260131T240507Z.000.log",
                                    "zol.20260131T096007Z.000.log",
                                    "zol.20260131T090560Z.000.log",
                                    "zol.20261331T090507Z.000.log",
                                    "zol.20260131T090507.000.log",
                                    "zol.20260131 090507Z.000.log",
                                    "zol.20260131T090507Z.000.log.gz",
                                    "zol.20260131T090507Z.000x.log",
                                    "zol20260131T090507Z.000.log",
                                    "zol_2026-01-31_20260131T090507Z.000.log"}) {
        EXPECT_FALSE(RotatedName::parse(other, "zol.log")) << other;
    }
    EXPECT_TRUE(RotatedName::parse("zol_2024-02-29.log", "zol.log"));
    EXPECT_TRUE(RotatedName::parse("zol_2000-02-29.log", "zol.log"));
}

TEST(RotatedName, IsOlderByNumberThenTimeThenCounter) {
    const fs::path live = "zol.log";
    const char* const oldestFirst[] = {"zol.12.log",
                                       "zol.2.log",
                                       "zol.1.log",
                                       "zol_2026-01-30.log",
                                       "zol.20260130T000001Z.000.log",
                                       "zol.20260131T090507Z.000.log",
                                       "zol.20260131T090507Z.001.log",
                                       "zol_2026-01-30.20260131T090507Z.001.log",
                                       "zol_2026-01-31.20260131T090507Z.001.log",
                                       "zol_2026-01-01.20260131T090508Z.000.log"};
    const RotatedName* before = nullptr;
    RotatedName kept;
    for (const char* const text : oldestFirst) {
        const auto name = RotatedName::parse(text, live);
        ASSERT_TRUE(name) << text;
        EXPECT_FALSE(name->isOlderThan(*name));
        if (before != nullptr) {
            EXPECT_TRUE(before->isOlderThan(*name)) << text;
            EXPECT_FALSE(name->isOlderThan(*before)) << text;
        }
        kept = *name;
        before = &kept;
    }
}

} // namespace
