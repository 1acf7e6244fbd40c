#include "Settings.h"

#include <gtest/gtest.h>

#include "Property.h"

using namespace ZOL::Backends;
using ZOL::Framework::Framework;

namespace {

/// The settings of a back end of the test's own name, and what is said about them.
class SettingsOfATest : public testing::Test {
protected:
    void SetUp() override { testing::internal::CaptureStderr(); }

    void TearDown() override {
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << "nobody expected this";
        if (Framework::propertyManager()->hasProperty(name)) {
            Framework::propertyManager()->clearProperty(name);
        }
    }

    static std::string complaint() {
        std::string text = testing::internal::GetCapturedStderr();
        testing::internal::CaptureStderr();
        return text;
    }

    static void set(std::string_view value) { setProperty("Test.x", value); }

    const ZOL::Framework::Management::WideString name = support::wide("Test.x");
    const Settings settings{"Test"};
};

TEST_F(SettingsOfATest, AreTheDefaultsIfNothingIsSet) {
    EXPECT_EQ(settings.text("x", "default"), "default");
    EXPECT_EQ(settings.path("x", "file"), (spdlog::filename_t{'f', 'i', 'l', 'e'}));
    EXPECT_EQ(settings.number("x", 7, 0, 9), 7);
    EXPECT_EQ(settings.size("x", 7), 7U);
    EXPECT_EQ(settings.choice("x", {"a", "b"}), 0U);
    EXPECT_TRUE(settings.levels("x").letOut("any", {}));
}

TEST_F(SettingsOfATest, ReadTexts) {
    Framework::propertyManager()->setProperty(name, {0x20AC});
    EXPECT_EQ(settings.text("x", "default"), "\xE2\x82\xAC");
    set("");
    EXPECT_EQ(settings.text("x", "default"), "default");
    EXPECT_EQ(complaint(), "ZOL back end Test: the property Test.x is \"\" and not a text; "
                           "using \"default\"\n");
}

TEST_F(SettingsOfATest, ReadNumbersWithinTheirRange) {
    set("9");
    EXPECT_EQ(settings.number("x", 7, 0, 9), 9);
    for (const char* bad : {"10", "-1", "", "3 ", "three", "99999999999999999999"}) {
        set(bad);
        EXPECT_EQ(settings.number("x", 7, 0, 9), 7);
        EXPECT_EQ(complaint(), "ZOL back end Test: the property Test.x is \"" + std::string(bad) +
                                   "\" and not a number from 0 to 9; using 7\n");
    }
}

TEST_F(SettingsOfATest, ReadSizesWithTheirUnits) {
    for (const auto& [text, size] : {std::pair<const char*, std::size_t>{"1", 1},
                                     {"4096", 4096},
                                     {"500K", 500 * 1024},
                                     {"2m", 2 * 1024 * 1024},
                                     {"1G", 1024 * 1024 * 1024}}) {
        set(text);
        EXPECT_EQ(settings.size("x", 7), size) << text;
    }
    for (const char* bad : {"0", "", "K", "1KB", "-1", "1.5M", "18014398509481984K"}) {
        set(bad);
        EXPECT_EQ(settings.size("x", 7), 7U);
        EXPECT_EQ(complaint(), "ZOL back end Test: the property Test.x is \"" + std::string(bad) +
                                   "\" and not a size such as 4096, 500K, 10M or 1G; using 7\n");
    }
}

TEST_F(SettingsOfATest, ReadChoicesInEitherCase) {
    set("B");
    EXPECT_EQ(settings.choice("x", {"a", "b"}), 1U);
    set("c");
    EXPECT_EQ(settings.choice("x", {"a", "b"}), 0U);
    EXPECT_EQ(complaint(),
              "ZOL back end Test: the property Test.x is \"c\" and not one of a, b; using a\n");
}

TEST_F(SettingsOfATest, ReadLevelRulesAndTellOfEachBadOne) {
    set("a=ERROR;b=LOUD;c");
    const LevelRules rules = settings.levels("x");
    EXPECT_FALSE(rules.letOut("a", ZOL::Framework::GenericLogger::LOG_LEVEL_INFO));
    const std::string text = complaint();
    EXPECT_NE(text.find("Test.x is \"b=LOUD\" and not PREFIX=LEVEL"), std::string::npos) << text;
    EXPECT_NE(text.find("Test.x is \"c\" and not PREFIX=LEVEL"), std::string::npos) << text;
}

TEST_F(SettingsOfATest, RefuseANameOfAFileWithAZeroInIt) {
    set(std::string_view("a\0b", 3));
    EXPECT_EQ(settings.path("x", "file"), (spdlog::filename_t{'f', 'i', 'l', 'e'}));
    EXPECT_NE(complaint().find("not the name of a file; using \"file\"\n"), std::string::npos);
}

TEST_F(SettingsOfATest, ShowABadValueWithLineBreaksInOneLine) {
    set("1\n2");
    settings.number("x", 7, 0, 9);
    EXPECT_NE(complaint().find("is \"1\\n2\" and not"), std::string::npos);
}

} // namespace
