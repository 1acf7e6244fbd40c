#pragma once

#include <string>
#include <vector>

namespace backendcheck {

/// Something of the whole process that a plug-in should leave as it is.
struct HostTrait {
    std::string what;
    std::string value;
    bool isGrave; // hosts go wrong if it changes
};

/// In the same order at every call.
std::vector<HostTrait> hostState();

/// The platform's part of it.
void addPlatformState(std::vector<HostTrait>& traits);

} // namespace backendcheck
