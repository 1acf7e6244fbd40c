#include "host/windows/TreeListing.h"

#include <algorithm>
#include <string>
#include <vector>

#include "host/windows/ReportTree.h"

using ZOL::RegistryAccess::Registry;

namespace Demo {

namespace {

constexpr std::size_t mostLines = 40;

std::string textIn(const Registry& node, const char* value) {
    const Registry::Bytes text = node.getStringValue(value);
    return std::string(text.begin(), text.end());
}

/// The library reads values by their names and lists none, so of a tree of somebody else's this can
/// show the default value at most.
std::string valuesOf(const Registry& node) {
    std::string text;
    try {
        if (node.hasValue("")) {
            text += "  = " + textIn(node, "");
        }
        if (node.hasValue(fileValue)) {
            text += std::string("  ") + fileValue + " = " + textIn(node, fileValue);
        }
        for (const char* const value : {linesValue, findingValue}) {
            if (node.hasValue(value)) {
                text += std::string("  ") + value + " = " + std::to_string(node.getIntValue(value));
            }
        }
    } catch (const Registry::GenericRegistryError& error) {
        text += std::string("  (") + error.message() + ")"; // too long, or not what the name says
    }
    return text;
}

void addLines(std::vector<std::string>& lines, const Registry& node, std::size_t depth) {
    lines.push_back(std::string(2 * depth, ' ') + node.getName() + valuesOf(node));
    for (const Registry& subKey : node.getSubKeys()) {
        addLines(lines, subKey, depth + 1);
    }
}

} // namespace

void printTree(std::ostream& out, const Registry& node) {
    std::vector<std::string> lines;
    addLines(lines, node, 0);
    const std::size_t shown = std::min(lines.size(), mostLines);
    for (std::size_t i = 0; i < shown; ++i) {
        out << "    " << lines[i] << '\n';
    }
    if (shown < lines.size()) {
        out << "    ... and " << lines.size() - shown << " more keys\n";
    }
}

std::size_t countKeysBelow(const Registry& node) {
    const std::vector<Registry> subKeys = node.getSubKeys();
    std::size_t count = subKeys.size();
    for (const Registry& subKey : subKeys) {
        count += countKeysBelow(subKey);
    }
    return count;
}

} // namespace Demo
