// Compares what the compiler and the loaded module have with the stored lists in goldens/.

#include <algorithm>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Goldens.h"

std::string surface::exportsFile = ZOL_EXPORTS_FILE;

namespace {

constexpr const char* separator = ": ";

std::vector<std::string> linesOf(const std::string& path) {
    std::vector<std::string> lines;
    std::ifstream file(path);
    EXPECT_TRUE(file) << "cannot read " << path;
    for (std::string line; std::getline(file, line);) {
        lines.push_back(line);
    }
    return lines;
}

using Values = std::multimap<std::string, std::string>;

Values valuesByName(const std::vector<std::string>& lines) {
    Values values;
    for (const std::string& line : lines) {
        const std::size_t end = line.find(separator);
        values.emplace(line.substr(0, end), end == std::string::npos ? "" : line.substr(end + 2));
    }
    return values;
}

std::string lineOf(const std::string& name, const std::string& value) {
    return value.empty() ? name : name + separator + value;
}

/// Removes the lines that both have from both.
void dropCommon(Values& left, Values& right) {
    for (auto entry = left.begin(); entry != left.end();) {
        const auto [first, last] = right.equal_range(entry->first);
        const auto same = std::find(first, last, *entry);
        if (same != last) {
            right.erase(same);
            entry = left.erase(entry);
        } else {
            ++entry;
        }
    }
}

void expectGolden(const std::string& name, const std::vector<std::string>& current) {
    Values stored = valuesByName(linesOf(std::string(ZOL_GOLDENS) + "/" + name));
    Values present = valuesByName(current);
    dropCommon(stored, present);

    for (const auto& [what, value] : stored) {
        const auto now = present.find(what);
        if (now == present.end()) {
            ADD_FAILURE() << "gone from " << name << ": " << lineOf(what, value);
        } else {
            ADD_FAILURE() << "changed in " << name << ": " << what << ": was " << value << ", is "
                          << now->second;
            present.erase(now);
        }
    }
    for (const auto& [what, value] : present) {
        ADD_FAILURE() << "new, and not in " << name << ": " << lineOf(what, value);
    }
    if (testing::Test::HasFailure()) {
        ADD_FAILURE() << "to accept an intended change: scripts/accept-goldens.sh";
    }
}

TEST(Exports, MatchTheGolden) {
    expectGolden(surface::exportsFile, surface::currentExports());
}

TEST(Layouts, MatchTheGolden) {
    expectGolden("layouts.txt", surface::currentLayouts());
}

TEST(Layouts, NumbersOfLevelsMatchTheGolden) {
    expectGolden("levels.txt", surface::currentLevels());
}

TEST(Slots, MatchTheGolden) {
    expectGolden("slots.txt", surface::currentSlots());
}

TEST(ExceptionTypes, MatchTheGolden) {
    expectGolden("exceptions.txt", surface::currentExceptions());
}

} // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (argc > 1) {
        surface::exportsFile = argv[1];
    }
    return RUN_ALL_TESTS();
}
