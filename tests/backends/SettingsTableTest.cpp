// The table of settings, and the one in docs/back-ends.md, which must be the same.

#include "SettingsTable.h"

#include <fstream>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "Settings.h"

using namespace ZOL::Backends;

namespace {

std::string code(std::string_view text) {
    return "`" + std::string(text) + "`";
}

/// The values of a setting as the document shows them.
std::string documentedValues(const Setting& setting) {
    switch (setting.type) {
    case SettingType::choice: {
        std::string words;
        for (std::size_t i = 0; i < setting.choiceCount; ++i) {
            words.append(i == 0 ? "" : ", ").append(code(setting.choices[i]));
        }
        return words;
    }
    default:
        return expectedValue(setting);
    }
}

std::string documentedName(const Setting& setting) {
    const std::string name = std::string(setting.backend) + "." + std::string(setting.name);
    switch (setting.platform) {
    case SettingPlatform::onLinux:
        return code(name) + " on Linux";
    case SettingPlatform::onWindows:
        return code(name) + " on Windows";
    default:
        return code(name);
    }
}

std::string documentedTable() {
    std::string lines = "| Property | Default | Value | Meaning |\n|---|---|---|---|\n";
    for (const Setting& setting : settingsTable()) {
        const std::string defaultValue = setting.defaultHelp.empty()
                                             ? code(setting.defaultValue)
                                             : std::string(setting.defaultHelp);
        lines += "| " + documentedName(setting) + " | " + defaultValue + " | " +
                 documentedValues(setting) + " | " + std::string(setting.help) + " |\n";
    }
    return lines;
}

TEST(SettingsTable, IsInTheDocument) {
    std::ifstream document(ZOL_BACK_ENDS_DOCUMENT);
    ASSERT_TRUE(document.is_open()) << ZOL_BACK_ENDS_DOCUMENT;
    const std::string expected = documentedTable();
    std::string table;
    bool isInTable = false;
    for (std::string line; std::getline(document, line);) {
        line.erase(line.find_last_not_of('\r') + 1);
        isInTable = isInTable || line == "| Property | Default | Value | Meaning |";
        if (isInTable && line.empty()) {
            break;
        }
        if (isInTable) {
            table += line + "\n";
        }
    }
    EXPECT_EQ(table, expected) << "The table in the document must be:\n\n" << expected;
}

TEST(SettingsTable, HasEachSettingOfAPlatformOnce) {
    for (const SettingPlatform platform : {SettingPlatform::onLinux, SettingPlatform::onWindows}) {
        std::set<std::string> names;
        for (const Setting& setting : settingsTable()) {
            if (setting.platform == SettingPlatform::any || setting.platform == platform) {
                const std::string name =
                    std::string(setting.backend) + "." + std::string(setting.name);
                EXPECT_TRUE(names.insert(name).second) << name;
            }
        }
    }
}

TEST(SettingsTable, HasAHelpAndADefaultForEachSetting) {
    for (const Setting& setting : settingsTable()) {
        EXPECT_FALSE(setting.help.empty()) << setting.name;
        EXPECT_EQ(setting.help.find_first_of("|\n"), std::string_view::npos) << setting.help;
        EXPECT_NE(setting.defaultValue.empty(), setting.defaultHelp.empty()) << setting.name;
    }
}

/// Reads a setting by its type.
void readSetting(const Settings& settings, const Setting& setting) {
    switch (setting.type) {
    case SettingType::path:
        EXPECT_FALSE(settings.path(setting.name).empty());
        break;
    case SettingType::number:
        if (setting.defaultValue.empty()) {
            EXPECT_EQ(settings.optionalNumber(setting.name), std::nullopt);
            break;
        }
        EXPECT_GE(settings.number(setting.name), setting.min);
        EXPECT_LE(settings.number(setting.name), setting.max);
        EXPECT_EQ(std::to_string(settings.number(setting.name)), setting.defaultValue);
        break;
    case SettingType::size:
        EXPECT_GE(settings.size(setting.name), static_cast<std::size_t>(setting.min));
        break;
    case SettingType::mode:
        EXPECT_EQ(settings.mode(setting.name), std::nullopt);
        break;
    case SettingType::flush:
        EXPECT_EQ(setting.defaultValue, "line");
        EXPECT_EQ(settings.flush(setting.name).interval, std::nullopt);
        break;
    case SettingType::choice:
        EXPECT_EQ(settings.choice(setting.name), setting.defaultValue);
        break;
    case SettingType::levels:
        EXPECT_TRUE(settings.levels(setting.name).isEnabled("any", {}));
        break;
    default:
        EXPECT_FALSE(settings.text(setting.name).empty());
        break;
    }
}

TEST(SettingsTable, HasDefaultsThatAreValidValues) {
    for (const Setting& setting : settingsTable()) {
        if (isOnThisPlatform(setting)) {
            SCOPED_TRACE(std::string(setting.backend) + "." + std::string(setting.name));
            readSetting(Settings(std::string(setting.backend)), setting);
        }
    }
}

TEST(SettingsTable, FindsTheSettingOfABackEndBeforeThatOfEveryBackEnd) {
    const SettingsTable& table = settingsTable();
    ASSERT_NE(table.find("SystemLog", "pattern"), nullptr);
    EXPECT_EQ(table.find("SystemLog", "pattern")->backend, "SystemLog");
    ASSERT_NE(table.find("Console", "pattern"), nullptr);
    EXPECT_EQ(table.find("Console", "pattern")->backend, everyBackend);
    EXPECT_EQ(table.find("Console", "port"), nullptr);
    EXPECT_EQ(table.find("Console", "Colour"), nullptr) << "names are case-sensitive";
}

TEST(SettingsTable, HasTheSettingsOfThisPlatformOnly) {
    const Setting linuxOnly{"Test", "x", SettingType::text, SettingPlatform::onLinux, "", "x", {}};
    const Setting windowsOnly{"Test", "x", SettingType::text, SettingPlatform::onWindows, "",
                              "x",    {}};
    EXPECT_NE(isOnThisPlatform(linuxOnly), isOnThisPlatform(windowsOnly));
    const Setting rows[] = {linuxOnly, windowsOnly, linuxOnly};
    for (const Setting* first : {rows, rows + 1}) { // in either order
        const Setting* const found = SettingsTable(first, 2).find("Test", "x");
        ASSERT_NE(found, nullptr);
        EXPECT_TRUE(isOnThisPlatform(*found));
    }
}

} // namespace
