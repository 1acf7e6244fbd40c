#pragma once

#include <string>
#include <vector>

namespace backendcheck {

/// Something of the whole process that a plug-in should leave as it is.
struct HostSetting {
    std::string what;
    std::string value;
    bool isFatal; // hosts go wrong if it changes
};

/// In the same order at every call.
std::vector<HostSetting> hostSettings();

/// The platform's part of it.
void addPlatformSettings(std::vector<HostSetting>& traits);

} // namespace backendcheck
