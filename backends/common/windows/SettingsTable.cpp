#include "SettingsTable.h"

namespace ZOL::Backends {

bool isOnThisPlatform(const Setting& setting) {
    return setting.platform != SettingPlatform::onLinux;
}

std::string defaultOf(const Setting& setting) {
    return std::string(setting.defaultValue);
}

} // namespace ZOL::Backends
