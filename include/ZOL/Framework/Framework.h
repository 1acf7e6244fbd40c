#pragma once

#include "ZOL/Framework/Export.h"

namespace ZOL::Framework {

namespace Management {
class PropertyManager;
}

/// The process-wide services that have no class of their own. Use the static operations; an object
/// of this class has no data.
class Framework {
public:
    Framework() = default;
    Framework(const Framework&) = default;

    /// Returns the property store of the process; the first call creates it. Never null. The module
    /// destroys it when it unloads; callers must not delete it. Takes no lock: the first call must
    /// not overlap another call.
    ZOL_FRAMEWORK_API static Management::PropertyManager* propertyManager();

    /// Returns the next pseudo-random number, 0 to 65535. Do not use it for secrets: the generator
    /// of the loading thread starts in one of 1000 states, that of every other thread always in the
    /// same state. Any thread may call it. Throws boost::thread_resource_error if the lock cannot
    /// be acquired.
    ZOL_FRAMEWORK_API static unsigned short randomNumber();

    /// Does nothing.
    ZOL_FRAMEWORK_API Framework& operator=(const Framework& other);
};

} // namespace ZOL::Framework
