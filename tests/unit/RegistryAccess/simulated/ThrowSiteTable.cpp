#include "ThrowSiteTable.h"

#include <algorithm>

namespace support {

const std::vector<ThrowSite>& throwSites() {
    static const std::vector<ThrowSite> sites = {
        {281, "open", "RegOpenKeyA", Condition::Denied, "AccessDenied",
         "Unable to open requested key"},
        {286, "open", "RegOpenKeyA", Condition::OtherResult, "OpenError",
         "Unable to open requested key"},
        {295, "hasValue", "", Condition::NoHandle, "NotInitialized",
         "handle_ != 0: Invalid handle state."},
        {314, "getStringValue", "", Condition::NoHandle, "NotInitialized",
         "handle_ != 0: Invalid handle state."},
        {342, "getStringValue", "RegEnumValueA", Condition::Denied, "AccessDenied",
         "Not enough permissions to read value."},
        {345, "getStringValue", "RegEnumValueA", Condition::NoMoreItems, "NotFound",
         "The requested value was not found."},
        {350, "getStringValue", "RegEnumValueA", Condition::OtherResult, "OpenError",
         "Unable to open requested value."},
        {374, "getIntValue", "", Condition::NoHandle, "NotInitialized",
         "handle_ != 0: Invalid handle state."},
        {390, "getIntValue", "RegQueryValueExA", Condition::Denied, "AccessDenied",
         "Not enough permissions to read value."},
        {393, "getIntValue", "RegQueryValueExA", Condition::NoMoreItems, "NotFound",
         "The requested value was not found."},
        {398, "getIntValue", "RegQueryValueExA", Condition::OtherResult, "OpenError",
         "Unable to open requested value."},
        {401, "getIntValue", "", Condition::WrongType, "OpenError",
         "type == REG_DWORD: Only REG_DWORD value types are supported in getIntValue function."},
        {417, "create", "RegCreateKeyA", Condition::Denied, "AccessDenied",
         "Not enough permissions to create key."},
        {422, "create", "RegCreateKeyA", Condition::OtherResult, "CreationError",
         "Unable to create key."},
        {431, "deleteSubKey", "", Condition::NoHandle, "NotInitialized",
         "handle_ != 0: Invalid handle state."},
        {438, "deleteSubKey", "SHDeleteKeyA", Condition::Denied, "AccessDenied",
         "Not enough permissions to delete sub key."},
        {443, "deleteSubKey", "SHDeleteKeyA", Condition::OtherResult, "NotFound",
         "Unable to delete given key."},
        {450, "deleteValue", "", Condition::NoHandle, "NotInitialized",
         "handle_ != 0: Invalid handle state."},
        {457, "deleteValue", "RegDeleteValueA", Condition::Denied, "AccessDenied",
         "Not enough permissions to delete value."},
        {462, "deleteValue", "RegDeleteValueA", Condition::OtherResult, "NotFound",
         "Unable to delete given value."},
        {469, "updateStringValue", "", Condition::NoHandle, "NotInitialized",
         "handle_ != 0: Invalid handle state."},
        {491, "updateStringValue", "RegSetValueExA", Condition::Denied, "AccessDenied",
         "Not enough permissions to modify value."},
        {494, "updateStringValue", "RegSetValueExA", Condition::NoMoreItems, "NotFound",
         "The value to update was not found."},
        {499, "updateStringValue", "RegSetValueExA", Condition::OtherResult, "OpenError",
         "Unable to open requested value."},
        {509, "updateIntValue", "", Condition::NoHandle, "NotInitialized",
         "handle_ != 0: Invalid handle state."},
        {521, "updateIntValue", "RegSetValueExA", Condition::Denied, "AccessDenied",
         "Not enough permissions to modify value."},
        {524, "updateIntValue", "RegSetValueExA", Condition::NoMoreItems, "NotFound",
         "The value to update was not found."},
        {529, "updateIntValue", "RegSetValueExA", Condition::OtherResult, "OpenError",
         "Unable to open requested value."},
        {538, "getSubKeys", "", Condition::NoHandle, "NotInitialized",
         "handle_ != 0: Invalid handle state."},
        {561, "getSubKeys", "RegEnumKeyA", Condition::Denied, "AccessDenied",
         "Not enough permissions to read sub key enumeration."},
        {569, "getSubKeys", "RegEnumKeyA", Condition::OtherResult, "OpenError",
         "Unable to open enumerated sub key."},
        {595, "openSubKey", "", Condition::NoHandle, "NotInitialized",
         "handle_ != 0: Invalid handle state."},
        {603, "openSubKey", "RegOpenKeyA", Condition::Denied, "AccessDenied",
         "Not enough permissions to read requested key."},
        {608, "openSubKey", "RegOpenKeyA", Condition::OtherResult, "OpenError",
         "Unable to open requested key."},
        {617, "createSubKey", "", Condition::NoHandle, "NotInitialized",
         "handle_ != 0: Invalid handle state."},
        {625, "createSubKey", "RegCreateKeyA", Condition::Denied, "AccessDenied",
         "Not enough permissions to create requested key."},
        {630, "createSubKey", "RegCreateKeyA", Condition::OtherResult, "CreationError",
         "Unable to create requested key."},
        {656, "copyValuesFrom", "", Condition::NoHandle, "NotInitialized",
         "handle_ != 0 && otherNode.handle_ != 0: Invalid handle state."},
    };
    return sites;
}

const ThrowSite* findThrowSite(const std::string& operation, const std::string& function,
                               Condition condition) {
    const std::vector<ThrowSite>& sites = throwSites();
    const auto site = std::find_if(sites.begin(), sites.end(), [&](const ThrowSite& each) {
        return each.operation == operation && each.function == function &&
               each.condition == condition;
    });
    return site == sites.end() ? nullptr : &*site;
}

} // namespace support
