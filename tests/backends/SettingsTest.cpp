#include "Settings.h"

#include <chrono>
#include <iterator>
#include <limits>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "Process.h"
#include "Property.h"

using namespace ZOL::Backends;
using namespace ZOL::Framework::GenericLogger;
using ZOL::Framework::Framework;

namespace {

constexpr std::string_view letters[] = {"alpha", "beta"};

constexpr Setting rows[] = {
    {"Test", "text", SettingType::text, SettingPlatform::any, "", "default", {}},
    {"Test", "path", SettingType::path, SettingPlatform::any, "", "file", {}},
    {"Test", "number", SettingType::number, SettingPlatform::any, "", "7", {}, 0, 9},
    {"Test", "hour", SettingType::number, SettingPlatform::any, "", "", "no hour", 0, 23},
    {"Test", "size", SettingType::size, SettingPlatform::any, "", "2K", {}, 1},
    {"Test", "limit", SettingType::size, SettingPlatform::any, "", "0", {}},
    {"Test", "flush", SettingType::flush, SettingPlatform::any, "", "line", {}},
    {"Test", "mode", SettingType::mode, SettingPlatform::any, "", "", "the mode of the system"},
    {"Test",
     "choice",
     SettingType::choice,
     SettingPlatform::any,
     "",
     letters[0],
     {},
     0,
     0,
     letters,
     std::size(letters)},
    {"Test", "levels", SettingType::levels, SettingPlatform::any, "", "", {}},
    {"Test", "tag", SettingType::tag, SettingPlatform::any, "", "sender", {}},
    {"Test", "source", SettingType::eventSource, SettingPlatform::any, "", "sender", {}},
    {"Other", "other", SettingType::text, SettingPlatform::any, "", "default", {}},
};
constexpr SettingsTable table(rows, std::size(rows));

/// The settings of a back end named Test, and the reports about them.
class SettingsTest : public testing::Test {
protected:
    void SetUp() override { testing::internal::CaptureStderr(); }

    void TearDown() override {
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << "unexpected report";
        for (const Setting& setting : table) {
            const auto name = support::wide("Test." + std::string(setting.name));
            if (Framework::propertyManager()->hasProperty(name)) {
                Framework::propertyManager()->clearProperty(name);
            }
        }
    }

    static std::string report() {
        std::string text = testing::internal::GetCapturedStderr();
        testing::internal::CaptureStderr();
        return text;
    }

    static Settings settings() { return Settings("Test", table); }

    /// The settings with one property set.
    static Settings settings(const std::string& name, std::string_view value) {
        setProperty("Test." + name, value);
        return settings();
    }
};

TEST_F(SettingsTest, HaveTheDefaultsOfTheTableIfNoPropertyIsSet) {
    EXPECT_EQ(settings().text("text"), "default");
    EXPECT_EQ(settings().text("tag"), "sender");
    EXPECT_EQ(settings().text("source"), "sender");
    EXPECT_EQ(settings().path("path"), std::filesystem::path("file"));
    EXPECT_EQ(settings().number("number"), 7);
    EXPECT_EQ(settings().size("size"), 2048U);
    EXPECT_EQ(settings().size("limit"), 0U);
    EXPECT_EQ(settings().optionalNumber("hour"), std::nullopt);
    EXPECT_EQ(settings().mode("mode"), std::nullopt);
    EXPECT_EQ(settings().choice("choice"), "alpha");
    EXPECT_TRUE(settings().levels("levels").isEnabled("any", {}));
}

TEST_F(SettingsTest, ThrowIfTheTableHasNoSuchSettingOrOneOfAnotherType) {
    EXPECT_THROW(settings().text("numbre"), std::logic_error);
    EXPECT_THROW(settings().text("number"), std::logic_error);
    EXPECT_THROW(settings().path("text"), std::logic_error);
    EXPECT_THROW(settings().number("size"), std::logic_error);
    EXPECT_THROW(settings().size("number"), std::logic_error);
    EXPECT_THROW(settings().optionalNumber("mode"), std::logic_error);
    EXPECT_THROW(settings().mode("number"), std::logic_error);
    EXPECT_THROW(settings().choice("text"), std::logic_error);
    EXPECT_THROW(settings().levels("text"), std::logic_error);
    EXPECT_THROW(Settings("Other", table).text("text"), std::logic_error);
}

TEST_F(SettingsTest, KeepTheValuesThatWereSetWhenTheyWereConstructed) {
    const Settings before = settings("text", "before");
    const Settings after = settings("text", "after");
    EXPECT_EQ(before.text("text"), "before");
    EXPECT_EQ(after.text("text"), "after");
    EXPECT_FALSE(before.hasSameValues(after));
    EXPECT_TRUE(before.hasSameValues(settings("text", "before")));
    EXPECT_TRUE(before.hasSameValues(settings("other", "not a setting of this back end")));
}

TEST_F(SettingsTest, ReadsTexts) {
    Framework::propertyManager()->setProperty(support::wide("Test.text"), {0x20AC});
    EXPECT_EQ(settings().text("text"), "\xE2\x82\xAC");
    EXPECT_EQ(settings("text", "").text("text"), "default");
    EXPECT_EQ(report(), "ZOL back end Test: the property Test.text is \"\" and not a text; "
                        "using \"default\"\n");
}

TEST_F(SettingsTest, ReadsNumbersWithinTheirRange) {
    EXPECT_EQ(settings("number", "0").number("number"), 0);
    EXPECT_EQ(settings("number", "9").number("number"), 9);
    for (const char* invalid : {"10", "-1", "", "3 ", "three", "99999999999999999999"}) {
        EXPECT_EQ(settings("number", invalid).number("number"), 7);
        EXPECT_EQ(report(), "ZOL back end Test: the property Test.number is \"" +
                                std::string(invalid) +
                                "\" and not a number from 0 to 9; using 7\n");
    }
}

TEST_F(SettingsTest, ReadsNumbersWithoutADefault) {
    EXPECT_EQ(settings("hour", "0").optionalNumber("hour"), 0);
    EXPECT_EQ(settings("hour", "23").optionalNumber("hour"), 23);
    EXPECT_EQ(settings("hour", "24").optionalNumber("hour"), std::nullopt);
    EXPECT_EQ(report(),
              "ZOL back end Test: the property Test.hour is \"24\" and not a number from 0 "
              "to 23; using no hour\n");
    EXPECT_EQ(settings("number", "3").optionalNumber("number"), 3);
}

TEST_F(SettingsTest, ReadsPermissionsAsOctalNumbers) {
    EXPECT_EQ(settings("mode", "640").mode("mode"), 0640U);
    EXPECT_EQ(settings("mode", "0600").mode("mode"), 0600U);
    EXPECT_EQ(settings("mode", "0777").mode("mode"), 0777U);
    EXPECT_EQ(settings("mode", "0").mode("mode"), 0U);
    for (const char* invalid : {"1000", "8", "", "-1", "rw-r-----", "0o640"}) {
        EXPECT_EQ(settings("mode", invalid).mode("mode"), std::nullopt);
        EXPECT_EQ(report(), "ZOL back end Test: the property Test.mode is \"" +
                                std::string(invalid) +
                                "\" and not an octal number from 0 to 0777 such as 0640; using the "
                                "mode of the system\n");
    }
}

TEST_F(SettingsTest, ReadsALimitThatMayBeNone) {
    EXPECT_EQ(settings("limit", "0").size("limit"), 0U);
    EXPECT_EQ(settings("limit", "3k").size("limit"), 3072U);
    EXPECT_EQ(settings("limit", "none").size("limit"), 0U);
    EXPECT_EQ(report(),
              "ZOL back end Test: the property Test.limit is \"none\" and not a size such "
              "as 4096, 500K, 10M or 1G, or 0; using 0\n");
}

TEST_F(SettingsTest, ReadsSizesWithTheirUnits) {
    for (const auto& [text, size] : {std::pair<const char*, std::size_t>{"1", 1},
                                     {"4096", 4096},
                                     {"500K", 500 * 1024},
                                     {"3k", 3 * 1024},
                                     {"2m", 2 * 1024 * 1024},
                                     {"7M", 7 * 1024 * 1024},
                                     {"1G", 1024 * 1024 * 1024},
                                     {"2g", std::size_t{2} * 1024 * 1024 * 1024}}) {
        EXPECT_EQ(settings("size", text).size("size"), size) << text;
    }
    for (const char* invalid : {"0", "", "K", "1KB", "-1", "1.5M", "18014398509481984K"}) {
        EXPECT_EQ(settings("size", invalid).size("size"), 2048U);
        EXPECT_EQ(report(), "ZOL back end Test: the property Test.size is \"" +
                                std::string(invalid) +
                                "\" and not a size such as 4096, 500K, 10M or 1G; using 2048\n");
    }
}

TEST_F(SettingsTest, ReadsWhenLinesAreFlushed) {
    using namespace std::chrono_literals;
    constexpr long long aboveAllLevels = std::numeric_limits<long long>::max();
    const std::map<std::string, std::pair<std::chrono::milliseconds, long long>> expected{
        {"1ms", {1ms, aboveAllLevels}},   {"200ms", {200ms, aboveAllLevels}},
        {"2S", {2s, aboveAllLevels}},     {"60m", {1h, aboveAllLevels}},
        {"1h", {1h, aboveAllLevels}},     {"3600000ms", {1h, aboveAllLevels}},
        {"ERROR", {1s, LOG_LEVEL_ERROR}}, {"trace", {1s, LOG_LEVEL_TRACE}}};
    for (const auto& [text, flush] : expected) {
        const FlushSettings result = settings("flush", text).flush("flush");
        EXPECT_EQ(result.interval, flush.first) << text;
        EXPECT_EQ(result.minLevel, flush.second) << text;
    }
    for (const char* const line : {"line", "LINE"}) {
        EXPECT_EQ(settings("flush", line).flush("flush").interval, std::nullopt);
    }
}

TEST_F(SettingsTest, ReportsOtherTimesOfFlushes) {
    for (const std::string text :
         {"200", "0ms", "-1ms", "61m", "2h", "3600001ms", "1.5s", "1 s", "s", "", "lines",
          "99999999999999999999ms", "9223372036854775807h", "ERROR;", "-5", "1d"}) {
        EXPECT_EQ(settings("flush", text).flush("flush").interval, std::nullopt);
        EXPECT_EQ(report(), "ZOL back end Test: the property Test.flush is \"" + text +
                                "\" and not line, a level such as ERROR, or a time such as 200ms "
                                "or 2s, up to 1h; using line\n");
    }
}

TEST_F(SettingsTest, ReadsChoicesInAnyCase) {
    EXPECT_EQ(settings("choice", "BETA").choice("choice"), "beta");
    EXPECT_EQ(settings("choice", "Alpha").choice("choice"), "alpha");
}

TEST_F(SettingsTest, ReportsAnUnknownChoiceWithTheNearestOne) {
    EXPECT_EQ(settings("choice", "beat").choice("choice"), "alpha");
    EXPECT_EQ(report(), "ZOL back end Test: the property Test.choice is \"beat\" and not one of "
                        "alpha, beta; using alpha (did you mean beta?)\n");
    EXPECT_EQ(settings("choice", "gamma").choice("choice"), "alpha");
    EXPECT_EQ(report(), "ZOL back end Test: the property Test.choice is \"gamma\" and not one of "
                        "alpha, beta; using alpha\n");
}

TEST_F(SettingsTest, ReadsLevelRulesAndReportsEachInvalidOne) {
    const LevelFilter filter = settings("levels", "a=ERROR;b=WARNIGN;c").levels("levels");
    EXPECT_FALSE(filter.isEnabled("a", LOG_LEVEL_INFO));
    EXPECT_TRUE(filter.isEnabled("b", LOG_LEVEL_INFO));
    const std::string begin = "ZOL back end Test: the property Test.levels is ";
    const std::string end =
        " and not PREFIX=LEVEL with a level such as INFO, 35 or OFF; using the other rules";
    EXPECT_EQ(report(), begin + "\"b=WARNIGN\"" + end + " (did you mean WARNING?)\n" + begin +
                            "\"c\"" + end + "\n");
}

TEST_F(SettingsTest, ReportsLevelRulesWithAnotherSeparator) {
    const LevelFilter filter = settings("levels", "=WARNING,b=TRACE;a=ERROR").levels("levels");
    EXPECT_FALSE(filter.isEnabled("a", LOG_LEVEL_INFO));
    EXPECT_EQ(report(), "ZOL back end Test: the property Test.levels is \"=WARNING,b=TRACE\" and "
                        "not rules that are separated by semicolons; using the other rules\n");
}

TEST_F(SettingsTest, ReadsTagsWithoutCharactersThatEndATag) {
    for (const char* valid : {"shop", "shop-2.5_x/y]", "\xC3\xB6"}) {
        Framework::propertyManager()->setProperty(support::wide("Test.tag"), support::wide(valid));
        EXPECT_NE(settings().text("tag"), "sender") << valid;
    }
    for (const char* invalid :
         {"", "my shop", " shop", "shop:", "shop[1]", "a\tb", "a\x1F", "\x7F"}) {
        EXPECT_EQ(settings("tag", invalid).text("tag"), "sender") << invalid;
        const std::string text = report();
        EXPECT_NE(text.find("and not a text without blanks, control characters, ':' and '['; using "
                            "\"sender\"\n"),
                  std::string::npos)
            << text;
    }
}

TEST_F(SettingsTest, ReadsEventSourcesWithoutABackslash) {
    EXPECT_EQ(settings("source", "my shop: [1]").text("source"), "my shop: [1]");
    for (const char* invalid : {"", "\\", "shop\\x"}) {
        EXPECT_EQ(settings("source", invalid).text("source"), "sender");
        EXPECT_EQ(report(), "ZOL back end Test: the property Test.source is \"" +
                                std::string(invalid) +
                                "\" and not a text without backslashes; using \"sender\"\n");
    }
}

TEST_F(SettingsTest, ReadsPathsAndRejectsAnEmptyOne) {
    EXPECT_EQ(settings("path", "a b/c.log").path("path"), std::filesystem::path("a b/c.log"));
    EXPECT_EQ(settings("path", "").path("path"), std::filesystem::path("file"));
    EXPECT_EQ(report(), "ZOL back end Test: the property Test.path is \"\" and not the name of a "
                        "file; using \"file\"\n");
}

TEST_F(SettingsTest, ReplacesPlaceholdersInPaths) {
    const std::string pid = std::to_string(processId());
    EXPECT_EQ(settings("path", "{pid}").path("path"), std::filesystem::path(pid));
    EXPECT_EQ(settings("path", "logs/{program}-{pid}.{instance}.log").path("path"),
              std::filesystem::path("logs/" + programName() + "-" + pid + ".Test.log"));
    EXPECT_EQ(settings("path", "a}b{pid").path("path"), std::filesystem::path("a}b{pid"))
        << "a brace alone is not a placeholder";
}

TEST_F(SettingsTest, ReportsUnknownPlaceholdersAndKeepsThem) {
    EXPECT_EQ(settings("path", "{Pid}-{pid}-{}.log").path("path"),
              std::filesystem::path("{Pid}-" + std::to_string(processId()) + "-{}.log"));
    EXPECT_EQ(report(), "ZOL back end Test: the property Test.path contains {Pid}, {} and not only "
                        "{pid}, {program} and {instance}; using {Pid}, {} as it is\n");
}

TEST_F(SettingsTest, RejectsAPathWithAZero) {
    const std::string_view withZero("a\0b", 3);
    EXPECT_EQ(settings("path", withZero).path("path"), std::filesystem::path("file"));
    EXPECT_NE(report().find("not the name of a file; using \"file\"\n"), std::string::npos);
}

TEST_F(SettingsTest, ReportsAnInvalidValueWithLineBreaksInOneLine) {
    static_cast<void>(settings("number", "1\n2").number("number"));
    EXPECT_NE(report().find("is \"1\\n2\" and not"), std::string::npos);
}

} // namespace
