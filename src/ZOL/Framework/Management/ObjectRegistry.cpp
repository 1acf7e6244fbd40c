#include "ZOL/Framework/Management/ObjectRegistry.h"

namespace ZOL::Framework::Management {

void* ObjectRegistry::registerObject(const char* name, void* (*factory)()) {
    const boost::mutex::scoped_lock lock(mutex_);

    void* const known = lookup(name);
    if (known != nullptr) {
        return known;
    }
    void* const created = factory();
    // Has no effect if the name is registered with null.
    objects_.emplace(name, created);
    return created;
}

void* ObjectRegistry::findObject(const char* name) {
    const boost::mutex::scoped_lock lock(mutex_);
    return lookup(name);
}

void* ObjectRegistry::lookup(const char* name) const {
    const auto entry = objects_.find(std::string(name));
    return entry != objects_.end() ? entry->second : nullptr;
}

} // namespace ZOL::Framework::Management
