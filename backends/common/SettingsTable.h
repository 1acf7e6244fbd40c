#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ZOL::Backends {

/// What the text of a setting stands for.
enum class SettingType {
    text,        ///< any text that is not empty
    path,        ///< the name of a file
    number,      ///< an integer from min to max
    size,        ///< a number of bytes, from min on
    flush,       ///< when lines are handed to the system
    mode,        ///< permissions of a file on Linux
    choice,      ///< one of the choices, in any case
    levels,      ///< rules of a LevelFilter
    pattern,     ///< the form of a line
    tag,         ///< the name of a sender in the system log of Linux
    eventSource, ///< the name of a sender in the Windows event log
};

enum class SettingPlatform { any, onWindows, onLinux };

/// The back end of a setting that every back end has.
constexpr std::string_view everyBackend = "<BackEnd>";

/// One setting: the property <backend>.<name>.
struct Setting {
    std::string_view backend; ///< everyBackend, or the one that has it
    std::string_view name;
    SettingType type;
    SettingPlatform platform;
    std::string_view help;         ///< one line
    std::string_view defaultValue; ///< as a host would write it; empty if defaultHelp says it
    std::string_view defaultHelp;  ///< the default in words, if it is not a fixed text
    long long min = 0;
    long long max = 0;
    const std::string_view* choices = nullptr; ///< the first one is the default
    std::size_t choiceCount = 0;
};

/// The settings of the back ends. All checks, defaults and documents come from it.
class SettingsTable {
public:
    constexpr SettingsTable(const Setting* first, std::size_t count)
        : first_(first), count_(count) {}

    const Setting* begin() const { return first_; }
    const Setting* end() const { return first_ + count_; }

    /// The setting of a back end on this platform: its own one, or that of every back end. Null if
    /// there is none.
    const Setting* find(std::string_view backend, std::string_view name) const;

private:
    const Setting* first_;
    std::size_t count_;
};

/// The settings of the ready-made back ends.
const SettingsTable& settingsTable();

/// What a value of the setting must be: "a number from 0 to 23".
std::string expectedValue(const Setting& setting);

/// Whether the setting exists on this platform.
bool isOnThisPlatform(const Setting& setting);

/// The default as a host would write it, also if it depends on the host.
std::string defaultOf(const Setting& setting);

} // namespace ZOL::Backends
