#include "Golden.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <map>

#include <gtest/gtest.h>

namespace boundary {

namespace {

constexpr const char* acceptance = "ZOL_ACCEPT_GOLDENS";
constexpr const char* toAccept =
    "To accept an intended change: scripts/accept-boundary.sh (docs/binary-contract.md)";
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

void store(const std::string& path, const std::vector<std::string>& lines) {
    std::ofstream file(path, std::ios_base::binary);
    for (const std::string& line : lines) {
        file << line << '\n';
    }
    ASSERT_TRUE(file.flush()) << "cannot write " << path;
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

/// Takes the lines that both have out of both.
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

} // namespace

void expectGolden(const std::string& name, std::vector<std::string> seen) {
    const std::string path = std::string(ZOL_GOLDENS) + "/" + name;
    std::sort(seen.begin(), seen.end());
    if (std::getenv(acceptance) != nullptr) {
        store(path, seen);
        return;
    }
    Values wasThere = valuesByName(linesOf(path));
    Values isThere = valuesByName(seen);
    dropCommon(wasThere, isThere);

    for (const auto& [what, value] : wasThere) {
        const auto now = isThere.find(what);
        if (now == isThere.end()) {
            ADD_FAILURE() << "gone from " << name << ": " << lineOf(what, value);
        } else {
            ADD_FAILURE() << "changed in " << name << ": " << what << ": was " << value << ", is "
                          << now->second;
            isThere.erase(now);
        }
    }
    for (const auto& [what, value] : isThere) {
        ADD_FAILURE() << "new, and not in " << name << ": " << lineOf(what, value);
    }
    if (testing::Test::HasFailure()) {
        ADD_FAILURE() << toAccept;
    }
}

} // namespace boundary
