#include "ZOL/Framework/Framework.h"

#include <new>

#include "ZOL/Framework/Management/PropertyManagerImpl.h"
#include "ZOL/Framework/StaticObjects.h"
#include "ZOL/Platform/RandomGenerator.h"
#include "ZOL/Platform/Unload.h"

namespace ZOL::Framework {

namespace {

// The property store is constructed in this storage at the first use. A local static object would
// take the compiler's lock, which is not needed: users must synchronise the first use themselves.
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
        // Set before the construction; the first call must not overlap another one, see the header.
        propertyManagerCreated_ = true;
        try {
            new (propertyManagerStorage) Management::PropertyManagerImpl;
        } catch (...) {
            propertyManagerCreated_ = false;
            throw;
        }
        // Registered after the destructors of all static objects, so it runs before them.
        Platform::atUnload(destroyPropertyManager);
    }
    return storedPropertyManager();
}

unsigned short Framework::randomNumber() {
    std::uint32_t sum = 0;
    {
        const boost::mutex::scoped_lock lock(randomMutex_);
        // With the counter, threads whose generators have the same state get different numbers.
        sum = Platform::drawRandomNumber() + randomCounter_;
        ++randomCounter_;
    }
    return static_cast<unsigned short>(sum);
}

Framework& Framework::operator=(const Framework&) {
    return *this;
}

} // namespace ZOL::Framework
