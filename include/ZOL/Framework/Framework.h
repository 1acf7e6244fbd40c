#pragma once

#include "ZOL/Framework/Export.h"

namespace ZOL::Framework {

namespace Management {
class PropertyManager;
}

/// Facade of the process-wide services that have no class of their own. Used through its static
/// operations; an object of it holds nothing.
class Framework {
public:
    Framework() = default;
    Framework(const Framework&) = default;

    /// The process's one property store, made at the first call; never null, never to be deleted,
    /// gone when the module unloads. Takes no lock: the first call must not overlap another one.
    ZOL_FRAMEWORK_API static Management::PropertyManager* propertyManager();

    /// The next pseudo-random number, 0 to 65535. Not for secrets: the generator of the loading
    /// thread starts at one of a thousand states, that of any other thread always at the same one.
    /// Any thread may call it. Throws boost::thread_resource_error if its lock cannot wait.
    ZOL_FRAMEWORK_API static unsigned short randomNumber();

    /// Copies nothing.
    ZOL_FRAMEWORK_API Framework& operator=(const Framework& other);
};

} // namespace ZOL::Framework
