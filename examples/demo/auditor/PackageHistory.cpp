#include "auditor/PackageHistory.h"

#include <algorithm>
#include <sstream>

namespace Demo {

namespace {

bool isUnfinished(const std::string& state) {
    constexpr std::string_view states[] = {"half-installed", "unpacked", "half-configured",
                                           "triggers-awaited", "triggers-pending"};
    return std::find(std::begin(states), std::end(states), state) != std::end(states);
}

} // namespace

PackageHistory::Step PackageHistory::take(std::string_view entry, std::size_t lineNumber) {
    std::istringstream words{std::string(entry)};
    std::string action;
    std::string second;
    std::string third;
    std::string fourth;
    words >> action >> second >> third >> fourth;
    if (fourth.empty()) {
        return {Event::none, ""};
    }

    if (action == "status") {
        if (isUnfinished(second)) {
            unfinished_[third] = {second, lineNumber};
        } else {
            unfinished_.erase(third);
        }
        return {Event::none, ""};
    }
    if (action == "install") {
        return {Event::installed, second};
    }
    if (action == "upgrade") {
        return {Event::upgraded, second};
    }
    if (action == "remove") {
        return {Event::removed, second};
    }
    return {Event::none, ""};
}

} // namespace Demo
