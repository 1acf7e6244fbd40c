#include "Pattern.h"

#include <algorithm>
#include <cctype>
#include <chrono>
#include <fstream>
#include <ratio>
#include <set>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "PatternLine.h"
#include "Process.h"
#include "ReopeningSink.h"
#include "SettingsTable.h"

using namespace ZOL::Backends;
using namespace ZOL::Framework::GenericLogger;

namespace {

std::string line(std::string_view pattern) {
    return PatternLine(pattern).at(exampleTime());
}

std::string_view defaultPattern(std::string_view backend) {
    return settingsTable().find(backend, "pattern")->defaultValue;
}

std::string lineOfLevel(std::string_view pattern, int level) {
    PatternLine line(pattern);
    line.record.level = static_cast<LoggingLevel>(level);
    return line.at(exampleTime());
}

TEST(Pattern, HasFlagsForThePartsOfAMessage) {
    EXPECT_EQ(line("%v|%V|%l|%L|%n|%%"),
              "WARNING [orders] stock is low|stock is low|WARNING|W|orders|%");
    EXPECT_EQ(line("no flag"), "no flag");
    EXPECT_EQ(line(""), "");
}

TEST(Pattern, WritesTheRecordOfTheMoment) {
    PatternLine line("%V");
    EXPECT_EQ(line.at(exampleTime()), "stock is low");
    line.record.text = "sold out";
    EXPECT_EQ(line.at(exampleTime()), "sold out");
}

TEST(Pattern, NamesTheLevelsAsTheProductDoes) {
    EXPECT_EQ(lineOfLevel("%l %L", LOG_LEVEL_FATAL), "FATAL F");
    EXPECT_EQ(lineOfLevel("%l %L", LOG_LEVEL_ERROR), "ERROR E");
    EXPECT_EQ(lineOfLevel("%l %L", LOG_LEVEL_INFO), "INFO I");
    EXPECT_EQ(lineOfLevel("%l %L", LOG_LEVEL_INFO + 5), "INFO+5 I");
    EXPECT_EQ(lineOfLevel("%l %L", LOG_LEVEL_DEBUG), "DEBUG D");
    EXPECT_EQ(lineOfLevel("%l %L", LOG_LEVEL_TRACE), "TRACE T");
    EXPECT_EQ(lineOfLevel("%l %L", LOG_LEVEL_NONE), "NONE N");
}

TEST(Pattern, HasTheSyslogPriorityOfEachLevel) {
    EXPECT_EQ(lineOfLevel("%y", LOG_LEVEL_FATAL), "10");
    EXPECT_EQ(lineOfLevel("%y", LOG_LEVEL_ERROR), "11");
    EXPECT_EQ(lineOfLevel("%y", LOG_LEVEL_WARNING), "12");
    EXPECT_EQ(lineOfLevel("%y", LOG_LEVEL_WARNING - 1), "14");
    EXPECT_EQ(lineOfLevel("%y", LOG_LEVEL_INFO), "14");
    EXPECT_EQ(lineOfLevel("%y", LOG_LEVEL_DEBUG), "15");
    EXPECT_EQ(lineOfLevel("%y", LOG_LEVEL_TRACE), "15");
    EXPECT_EQ(lineOfLevel("%y", LOG_LEVEL_NONE), "15");
}

TEST(Pattern, HasWordsForTheProgramAndTheMachine) {
    EXPECT_EQ(line("%N"), programName());
    EXPECT_EQ(programName(), "zol_backend_common_tests");
    EXPECT_EQ(line("%W"), hostName());
    EXPECT_NE(hostName(), "-");
    EXPECT_EQ(hostName().find_first_of(" \t\r\n"), std::string::npos) << hostName();
}

TEST(Pattern, HasADifferentNumberForEachThread) {
    const PatternLine pattern("%t");
    const std::string here = pattern.at(exampleTime());
    std::string there;
    std::thread([&] { there = pattern.at(exampleTime()); }).join();
    EXPECT_NE(there, here);
    EXPECT_EQ(pattern.at(exampleTime()), here);
    EXPECT_EQ(here.find_first_not_of("0123456789"), std::string::npos) << here;
}

TEST(Pattern, AlignsTexts) {
    EXPECT_EQ(line("[%9l][%-9l][%=9l][%=10l]"), "[  WARNING][WARNING  ][ WARNING ][ WARNING  ]");
    EXPECT_EQ(line("[%7l][%3l][%-l]"), "[WARNING][WARNING][WARNING]");
    EXPECT_EQ(line("[%4y][%-4y]"), "[  12][12  ]");
    EXPECT_EQ(line("%100L"), std::string(63, ' ') + "W");
}

TEST(Pattern, TruncatesTexts) {
    EXPECT_EQ(line("[%4!l][%-4!l][%7!l][%8!l]"), "[WARN][WARN][WARNING][ WARNING]");
    EXPECT_EQ(line("[%0!V]"), "[]");
}

TEST(Pattern, CountsCharactersAndNotBytes) {
    PatternLine aligned("[%5V][%2!V][%3!V]");
    aligned.record.text = "\u00e9\u20ac\U0001F600";
    EXPECT_EQ(aligned.at(exampleTime()),
              "[  \u00e9\u20ac\U0001F600][\u00e9\u20ac][\u00e9\u20ac\U0001F600]");
}

TEST(Pattern, WritesTimesInUtc) {
    EXPECT_EQ(line("%Y-%m-%d %H:%M:%S.%e%z"), "2026-01-31 09:05:07.012+00:00");
    EXPECT_EQ(line("%z"), "+00:00") << "without another flag of time";
    EXPECT_EQ(line("[%8z][%3!z]"), "[  +00:00][+00]");
}

TEST(Pattern, WritesTheTimeOfAClockThatWasSetBack) {
    const PatternLine line("%H:%M:%S");
    EXPECT_EQ(line.at(exampleTime()), "09:05:07");
    EXPECT_EQ(line.at(exampleTime() - std::chrono::hours(2)), "07:05:07");
    EXPECT_EQ(line.at(exampleTime()), "09:05:07");
}

TEST(Pattern, HasTheShapeOfASyslogLineForCollectors) {
    const std::string expected = "<12>2026-01-31T09:05:07.012+00:00 " + hostName() + " " +
                                 programName() + "[" + line("%P") +
                                 "]: WARNING [orders] stock is low";
    EXPECT_EQ(line(defaultPattern("Network")), expected);
}

TEST(Pattern, KeepsTheFallbacksFreeOfUnknownFlags) {
    EXPECT_TRUE(unknownFlags(defaultPattern("Console")).empty());
    EXPECT_TRUE(unknownFlags(defaultPattern("Network")).empty());
    EXPECT_EQ(line(defaultPattern("Console")),
              "2026-01-31 09:05:07.012 WARNING [orders] stock is low");
}

TEST(Pattern, NamesUnknownFlagsOnce) {
    using Flags = std::vector<std::string>;
    EXPECT_EQ(unknownFlags("%v %-8!V %=3l 100%% text"), Flags());
    EXPECT_EQ(unknownFlags("%q %v %q %s"), (Flags{"%q", "%s"}));
    EXPECT_EQ(unknownFlags("%-8!q%8k"), (Flags{"%-8!q", "%8k"}));
    EXPECT_EQ(unknownFlags("%\u20ac"), (Flags{"%\u20ac"}));
    EXPECT_EQ(unknownFlags("%g%#%!%@%+%&"), (Flags{"%g", "%#", "%!", "%@", "%+", "%&"}));
    EXPECT_EQ(unknownFlags("% v"), (Flags{"% "}));
}

TEST(Pattern, NamesAPercentSignAtTheEnd) {
    using Flags = std::vector<std::string>;
    EXPECT_EQ(unknownFlags("%v %"), (Flags{"%"}));
    EXPECT_EQ(unknownFlags("%v%-"), (Flags{"%-"}));
    EXPECT_EQ(unknownFlags("%v%12"), (Flags{"%12"}));
    EXPECT_EQ(unknownFlags("%v%12!"), (Flags{"%12!"}));
    EXPECT_EQ(unknownFlags("%v%%"), Flags());
}

TEST(Pattern, WritesUnknownFlagsAsTheyAre) {
    EXPECT_EQ(line("a%qb %s %-8!k %\u20ac %L %"), "a%qb %s %-8!k %\u20ac W %");
    EXPECT_EQ(line("%V%-12!"), "stock is low%-12!");
}

/// Flags whose text depends on the host, or is a colour.
bool hasNoFixedText(char flag) {
    return std::string_view("tPNWuioO^$").find(flag) != std::string_view::npos;
}

TEST(PatternsPage, ListsEveryFlagThatWorksWithWhatItWrites) {
    std::ifstream page(ZOL_PATTERNS_PAGE);
    std::set<char> listed;
    for (std::string row; std::getline(page, row);) {
        if (row.rfind("| `%", 0) != 0) {
            continue;
        }
        const char flag = row[4];
        EXPECT_TRUE(listed.insert(flag).second) << row;
        EXPECT_EQ(row[5], '`') << row;
        EXPECT_NE(knownFlags().find(flag), std::string_view::npos) << row;
        const std::string written = line({row.data() + 3, 2});
        EXPECT_NE(written, row.substr(3, 2)) << "is written as it is";
        // Not every system clock counts what the page shows.
        constexpr bool countsTenths =
            std::ratio_less_equal_v<std::chrono::system_clock::period, std::ratio<1, 10'000'000>>;
        if (!hasNoFixedText(flag) && (countsTenths || flag != 'F')) {
            const std::string example = " | `" + written + "` |";
            EXPECT_EQ(row.substr(row.size() - std::min(row.size(), example.size())), example);
        }
    }
    const std::set<char> known(knownFlags().begin(), knownFlags().end());
    EXPECT_EQ(listed, known);
    EXPECT_EQ(known.size(), knownFlags().size());
}

TEST(PatternsPage, LetsNoOtherFlagWork) {
    for (char flag = '!'; flag <= '~'; ++flag) {
        const bool isPrefix = std::isdigit(flag) != 0 || flag == '-' || flag == '=';
        if (isPrefix || knownFlags().find(flag) != std::string_view::npos) {
            continue;
        }
        const std::string pattern{'%', flag};
        EXPECT_EQ(line(pattern), pattern);
        EXPECT_EQ(unknownFlags(pattern), std::vector<std::string>{pattern});
    }
}

} // namespace
