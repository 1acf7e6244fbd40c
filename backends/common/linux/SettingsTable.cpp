#include "SettingsTable.h"

#include "Process.h"

namespace ZOL::Backends {

bool isOnThisPlatform(const Setting& setting) {
    return setting.platform != SettingPlatform::onWindows;
}

std::string defaultOf(const Setting& setting) {
    return setting.type == SettingType::tag && setting.defaultValue.empty()
               ? programName()
               : std::string(setting.defaultValue);
}

} // namespace ZOL::Backends
