#include "SettingsTable.h"

#include <iterator>

namespace ZOL::Backends {

namespace {

// Each function makes a row. The default of a choice is its first word.

constexpr Setting text(SettingType type, std::string_view backend, std::string_view name,
                       std::string_view defaultValue, std::string_view help) {
    return {backend, name, type, SettingPlatform::any, help, defaultValue, {}};
}

constexpr Setting number(std::string_view backend, std::string_view name,
                         std::string_view defaultValue, long long min, long long max,
                         std::string_view help) {
    return {backend, name, SettingType::number, SettingPlatform::any, help, defaultValue, {},
            min,     max};
}

constexpr Setting size(std::string_view backend, std::string_view name,
                       std::string_view defaultValue, std::string_view help) {
    return {backend, name, SettingType::size, SettingPlatform::any, help, defaultValue, {}};
}

constexpr Setting flush(std::string_view backend) {
    return {backend,
            "flush",
            SettingType::flush,
            SettingPlatform::any,
            "when the system gets a line: before the logging call returns, before that for lines "
            "from a level up and within a second for others, or within a time",
            "line",
            {}};
}

constexpr Setting fileMode(std::string_view backend) {
    return {backend,
            "mode",
            SettingType::mode,
            SettingPlatform::onLinux,
            "the permissions of new files, regardless of the umask",
            {},
            {}};
}

template <std::size_t count>
constexpr Setting choice(std::string_view backend, std::string_view name,
                         const std::string_view (&choices)[count], std::string_view help) {
    return {backend, name, SettingType::choice, SettingPlatform::any, help, choices[0], {}, 0, 0,
            choices, count};
}

constexpr Setting withDefaultHelp(Setting setting, std::string_view defaultHelp) {
    setting.defaultHelp = defaultHelp;
    return setting;
}

constexpr Setting only(SettingPlatform platform, Setting setting) {
    setting.platform = platform;
    return setting;
}

constexpr std::string_view timeStampedPattern = "%Y-%m-%d %H:%M:%S.%e %^%v%$";
/// The header of a line for collectors that expect the syslog format. A line that began with the
/// time would be misread by them: they take digits at its begin for its length.
constexpr std::string_view syslogPattern = "<%y>%Y-%m-%dT%H:%M:%S.%e%z %W %N[%P]: %v";
constexpr std::string_view pathHelp =
    "the file. A relative path starts at the current folder. Missing folders are created. {pid}, "
    "{program} and {instance} are replaced";
constexpr std::string_view sizeHelp =
    "the maximum size of a file in bytes. K, M and G are powers of 1024. 0 is no limit";
constexpr std::string_view hourHelp = "the hour of the local time at which a new file begins";
constexpr std::string_view minuteHelp = "the minute of that hour";
constexpr std::string_view countHelp = "how many older files are kept. 0 is no limit";
constexpr std::string_view daysHelp =
    "for how many days older files are kept, each of 24 hours. 0 is no limit";
constexpr std::string_view bytesHelp = "the maximum size of all files together. 0 is no limit";
constexpr std::string_view defaultModeHelp = "0640 less the umask";
constexpr long long maxCount = 100000;
constexpr long long maxDays = 10000;
constexpr std::string_view compressions[] = {"none", "gzip"};
constexpr std::string_view compressHelp = "how older files are compressed, on a thread of its own";
constexpr std::string_view times[] = {"local", "utc"};
constexpr std::string_view colours[] = {"auto", "always", "never"};
constexpr std::string_view protocols[] = {"tcp", "udp"};
constexpr std::string_view facilities[] = {"user",   "daemon", "local0", "local1", "local2",
                                           "local3", "local4", "local5", "local6", "local7"};

constexpr Setting rows[] = {
    withDefaultHelp(
        text(SettingType::levels, everyBackend, "levels", "", "the minimum level for each logger"),
        "all messages are written"),
    text(SettingType::pattern, everyBackend, "pattern", timeStampedPattern,
         "the line, see docs/patterns.md. %v is LEVEL [logger] text"),
    text(SettingType::pattern, "DebugOutput", "pattern", "%v",
         "the line, as for the other back ends. The journal or the viewer adds the time"),
    text(SettingType::pattern, "Network", "pattern", syslogPattern,
         "the line, as for the other back ends"),
    text(SettingType::pattern, "SystemLog", "pattern", "%v",
         "the line, as for the other back ends. The system log adds the time"),
    choice(everyBackend, "time", times, "the time zone of the time stamps in the line"),

    choice("Console", "colour", colours, "when lines are coloured. auto is on a terminal"),

    text(SettingType::path, "RotatingFile", "path", "zol.log", pathHelp),
    size("RotatingFile", "size", "10M", sizeHelp),
    withDefaultHelp(number("RotatingFile", "hour", "", 0, 23, hourHelp), "at no time of day"),
    number("RotatingFile", "minute", "0", 0, 59, minuteHelp),
    number("RotatingFile", "count", "5", 0, maxCount, countHelp),
    number("RotatingFile", "days", "0", 0, maxDays, daysHelp),
    size("RotatingFile", "bytes", "0", bytesHelp),
    choice("RotatingFile", "compress", compressions, compressHelp),
    flush("RotatingFile"),
    withDefaultHelp(fileMode("RotatingFile"), defaultModeHelp),

    text(SettingType::path, "DailyFile", "path", "zol.log", "the file, as for RotatingFile"),
    size("DailyFile", "size", "0", "the maximum size of a file, as for RotatingFile"),
    number("DailyFile", "hour", "0", 0, 23, hourHelp),
    number("DailyFile", "minute", "0", 0, 59, minuteHelp),
    number("DailyFile", "count", "0", 0, maxCount, countHelp),
    number("DailyFile", "days", "0", 0, maxDays, daysHelp),
    size("DailyFile", "bytes", "0", bytesHelp),
    choice("DailyFile", "compress", compressions, compressHelp),
    flush("DailyFile"),
    withDefaultHelp(fileMode("DailyFile"), defaultModeHelp),

    only(SettingPlatform::onLinux, withDefaultHelp(text(SettingType::tag, "SystemLog", "source", "",
                                                        "the name of the sender"),
                                                   "the program's name")),
    only(SettingPlatform::onWindows,
         text(SettingType::eventSource, "SystemLog", "source", "ZOL", "the name of the sender")),
    only(SettingPlatform::onLinux,
         choice("SystemLog", "facility", facilities, "the kind of sender")),

    text(SettingType::text, "Network", "host", "127.0.0.1",
         "the collector's host name or address, IPv4 or IPv6"),
    number("Network", "port", "5170", 1, 65535, "the collector's port"),
    choice("Network", "protocol", protocols, "the protocol. udp sends one packet for each line"),
};

constexpr SettingsTable table(rows, std::size(rows));

} // namespace

const SettingsTable& settingsTable() {
    return table;
}

const Setting* SettingsTable::find(std::string_view backend, std::string_view name) const {
    const Setting* common = nullptr;
    for (const Setting& setting : *this) {
        if (setting.name != name || !isOnThisPlatform(setting)) {
            continue;
        }
        if (setting.backend == backend) {
            return &setting;
        }
        if (setting.backend == everyBackend) {
            common = &setting;
        }
    }
    return common;
}

std::string expectedValue(const Setting& setting) {
    switch (setting.type) {
    case SettingType::path:
        return "the name of a file";
    case SettingType::number:
        return "a number from " + std::to_string(setting.min) + " to " +
               std::to_string(setting.max);
    case SettingType::size:
        return setting.min == 0 ? "a size such as 4096, 500K, 10M or 1G, or 0"
                                : "a size such as 4096, 500K, 10M or 1G";
    case SettingType::flush:
        return "line, a level such as ERROR, or a time such as 200ms or 2s, up to 1h";
    case SettingType::mode:
        return "an octal number from 0 to 0777 such as 0640";
    case SettingType::choice: {
        std::string expected = "one of ";
        for (std::size_t i = 0; i < setting.choiceCount; ++i) {
            expected.append(i == 0 ? "" : ", ").append(setting.choices[i]);
        }
        return expected;
    }
    case SettingType::levels:
        return "rules PREFIX=LEVEL, separated by semicolons";
    case SettingType::tag:
        return "a text without blanks, control characters, ':' and '['";
    case SettingType::eventSource:
        return "a text without backslashes";
    default:
        return "a text";
    }
}

} // namespace ZOL::Backends
