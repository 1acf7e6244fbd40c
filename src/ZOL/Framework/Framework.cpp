#include "ZOL/Framework/Framework.h"

#include <new>

#include "ZOL/Framework/Management/PropertyManagerImpl.h"
#include "ZOL/Framework/StaticObjects.h"
#include "ZOL/Platform/RandomGenerator.h"
#include "ZOL/Platform/Unload.h"

namespace ZOL::Framework {

namespace {

// The property store, made at the first use in storage of its own: a local static object would
// bring the compiler's lock along, and its users take turns by one of theirs.
alignas(Management::PropertyManagerImpl) unsigned char propertyManagerStorage[sizeof(
    Management::PropertyManagerImpl)];

Management::PropertyManagerImpl* storedPropertyManager() {
    return std::launder(reinterpret_cast<Management::PropertyManagerImpl*>(propertyManagerStorage));
}

void destroyPropertyManager() {
    storedPropertyManager()->~PropertyManagerImpl();
}

} // namespace

Management::PropertyManager* Framework::propertyManager() {
    static bool propertyManagerCreated_ = false;
    if (!propertyManagerCreated_) {
        propertyManagerCreated_ = true; // before the object is finished, as callers know
        try {
            new (propertyManagerStorage) Management::PropertyManagerImpl;
        } catch (...) {
            propertyManagerCreated_ = false;
            throw;
        }
        // Registered later than the clean-ups of all static objects, so it comes before them.
        Platform::atUnload(destroyPropertyManager);
    }
    return storedPropertyManager();
}

unsigned short Framework::randomNumber() {
    std::uint32_t sum = 0;
    {
        const boost::mutex::scoped_lock lock(randomMutex_);
        // The count keeps threads apart whose generators stand at the same state.
        sum = Platform::drawRandomNumber() + randomCounter_;
        ++randomCounter_;
    }
    return static_cast<unsigned short>(sum);
}

Framework& Framework::operator=(const Framework&) {
    return *this;
}

} // namespace ZOL::Framework
