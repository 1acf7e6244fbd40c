#include "Settings.h"

#include <gtest/gtest.h>

#include "Property.h"

using namespace ZOL::Backends;
using ZOL::Framework::Framework;

namespace {

/// The settings of a back end named Test, and the reports about them.
class SettingsTest : public testing::Test {
protected:
    void SetUp() override { testing::internal::CaptureStderr(); }

    void TearDown() override {
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << "unexpected report";
        if (Framework::propertyManager()->hasProperty(name)) {
            Framework::propertyManager()->clearProperty(name);
        }
    }

    static std::string report() {
        std::string text = testing::internal::GetCapturedStderr();
        testing::internal::CaptureStderr();
        return text;
    }

    static void set(std::string_view value) { setProperty("Test.x", value); }

    const ZOL::Framework::Management::WideString name = support::wide("Test.x");
    const Settings settings{"Test"};
};

TEST_F(SettingsTest, HasFallbacksIfNoPropertyIsSet) {
    EXPECT_EQ(settings.text("x", "default"), "default");
    EXPECT_EQ(settings.path("x", "file"), std::filesystem::path("file"));
    EXPECT_EQ(settings.number("x", 7, 0, 9), 7);
    EXPECT_EQ(settings.size("x", 7), 7U);
    EXPECT_EQ(settings.choice("x", {"a", "b"}), 0U);
    EXPECT_TRUE(settings.levels("x").isEnabled("any", {}));
}

TEST_F(SettingsTest, ReadsTexts) {
    Framework::propertyManager()->setProperty(name, {0x20AC});
    EXPECT_EQ(settings.text("x", "default"), "\xE2\x82\xAC");
    set("");
    EXPECT_EQ(settings.text("x", "default"), "default");
    EXPECT_EQ(report(), "ZOL back end Test: the property Test.x is \"\" and not a text; "
                        "using \"default\"\n");
}

TEST_F(SettingsTest, ReadsNumbersWithinTheirRange) {
    set("9");
    EXPECT_EQ(settings.number("x", 7, 0, 9), 9);
    for (const char* invalid : {"10", "-1", "", "3 ", "three", "99999999999999999999"}) {
        set(invalid);
        EXPECT_EQ(settings.number("x", 7, 0, 9), 7);
        EXPECT_EQ(report(), "ZOL back end Test: the property Test.x is \"" + std::string(invalid) +
                                "\" and not a number from 0 to 9; using 7\n");
    }
}

TEST_F(SettingsTest, ReadsSizesWithTheirUnits) {
    for (const auto& [text, size] : {std::pair<const char*, std::size_t>{"1", 1},
                                     {"4096", 4096},
                                     {"500K", 500 * 1024},
                                     {"2m", 2 * 1024 * 1024},
                                     {"1G", 1024 * 1024 * 1024}}) {
        set(text);
        EXPECT_EQ(settings.size("x", 7), size) << text;
    }
    for (const char* invalid : {"0", "", "K", "1KB", "-1", "1.5M", "18014398509481984K"}) {
        set(invalid);
        EXPECT_EQ(settings.size("x", 7), 7U);
        EXPECT_EQ(report(), "ZOL back end Test: the property Test.x is \"" + std::string(invalid) +
                                "\" and not a size such as 4096, 500K, 10M or 1G; using 7\n");
    }
}

TEST_F(SettingsTest, ReadsChoicesInAnyCase) {
    set("B");
    EXPECT_EQ(settings.choice("x", {"a", "b"}), 1U);
    set("c");
    EXPECT_EQ(settings.choice("x", {"a", "b"}), 0U);
    EXPECT_EQ(report(),
              "ZOL back end Test: the property Test.x is \"c\" and not one of a, b; using a\n");
}

TEST_F(SettingsTest, ReadsLevelRulesAndReportsEachInvalidOne) {
    set("a=ERROR;b=LOUD;c");
    const LevelFilter filter = settings.levels("x");
    EXPECT_FALSE(filter.isEnabled("a", ZOL::Framework::GenericLogger::LOG_LEVEL_INFO));
    const std::string text = report();
    EXPECT_NE(text.find("Test.x is \"b=LOUD\" and not PREFIX=LEVEL"), std::string::npos) << text;
    EXPECT_NE(text.find("Test.x is \"c\" and not PREFIX=LEVEL"), std::string::npos) << text;
}

TEST_F(SettingsTest, RejectsAPathWithAZero) {
    set(std::string_view("a\0b", 3));
    EXPECT_EQ(settings.path("x", "file"), std::filesystem::path("file"));
    EXPECT_NE(report().find("not the name of a file; using \"file\"\n"), std::string::npos);
}

TEST_F(SettingsTest, ReportsAnInvalidValueWithLineBreaksInOneLine) {
    set("1\n2");
    settings.number("x", 7, 0, 9);
    EXPECT_NE(report().find("is \"1\\n2\" and not"), std::string::npos);
}

} // namespace
