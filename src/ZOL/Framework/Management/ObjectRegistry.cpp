#include "ZOL/Framework/Management/ObjectRegistry.h"

namespace ZOL::Framework::Management {

void* ObjectRegistry::registerObject(const char* name, void* (*factory)()) {
    const boost::mutex::scoped_lock lock(mutex_);

    void* const known = lookup(name);
    if (known != nullptr) {
        return known;
    }
    void* const made = factory();
    // A name that was registered with null keeps its null.
    objects_.emplace(name, made);
    return made;
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
