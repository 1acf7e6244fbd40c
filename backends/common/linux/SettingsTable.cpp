#include "SettingsTable.h"

#include <cerrno> // program_invocation_short_name

#include "Settings.h"

namespace ZOL::Backends {

bool isOnThisPlatform(const Setting& setting) {
    return setting.platform != SettingPlatform::onWindows;
}

std::string defaultOf(const Setting& setting) {
    return setting.type == SettingType::tag && setting.defaultValue.empty()
               ? tagOf(program_invocation_short_name)
               : std::string(setting.defaultValue);
}

} // namespace ZOL::Backends
