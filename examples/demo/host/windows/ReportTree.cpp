#include "host/windows/ReportTree.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "shared/Levels.h"

using ZOL::RegistryAccess::Registry;

namespace Demo {

const char* const fileValue = "file";
const char* const linesValue = "lines";
const char* const findingValue = "found";

namespace {

/// Without the folder, so that it is short enough to be read again.
Registry::Bytes fileNameOf(const std::string& path) {
    const std::string name = path.substr(path.find_last_of("\\/") + 1);
    Registry::Bytes bytes(name.begin(), name.end());
    bytes.push_back('\0'); // which is the caller's to add
    return bytes;
}

/// The registry's numbers have 32 bits.
std::int32_t numberOf(std::size_t count) {
    constexpr std::size_t most = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::min(count, most));
}

} // namespace

void fillFromReport(Registry& node, const Options& options, const RunReport& report) {
    node.updateStringValue(fileValue, fileNameOf(options.file));
    node.updateIntValue(linesValue, numberOf(report.lines));

    Registry levels = node.createSubKey("levels");
    for (const NamedLevel& named : namedLevels) {
        const auto counted = report.linesByLevel.find(named.level);
        const std::size_t lines = counted != report.linesByLevel.end() ? counted->second : 0;
        levels.createSubKey(named.name).updateIntValue(linesValue, numberOf(lines));
    }

    Registry findings = node.createSubKey("findings");
    const auto add = [&findings](const char* name, std::size_t count) {
        findings.createSubKey(name).updateIntValue(findingValue, numberOf(count));
    };
    add("packages installed", report.audit.installed);
    add("packages upgraded", report.audit.upgraded);
    add("packages removed", report.audit.removed);
    add("packages left unfinished", report.audit.unfinished);
    add("steps back in time", report.audit.backwards);
    add("lines without a time stamp", report.audit.untimed);
}

} // namespace Demo
