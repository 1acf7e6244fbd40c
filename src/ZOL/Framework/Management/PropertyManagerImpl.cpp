#include "ZOL/Framework/Management/PropertyManagerImpl.h"

#include <string_view>

#include "ZOL/Framework/Exceptions/UnexistentProperty.h"
#include "ZOL/Platform/NarrowString.h"

namespace ZOL::Framework::Management {

namespace {

constexpr std::string_view readFailure = "Trying to read unexistent property: ";
constexpr std::string_view clearFailure = "Trying to clear an unexistent property: ";

/// The whole text is narrowed at once: a name that cannot be takes the failure's words with it.
[[noreturn]] void throwUnexistent(std::string_view failure, const WideString& name) {
    WideString text(failure.begin(), failure.end());
    text += name;
    throw Exceptions::UnexistentProperty(Platform::narrowString(text.c_str()).c_str());
}

} // namespace

const WideString& PropertyManagerImpl::readProperty(const WideString& name) const {
    const auto property = properties_.find(name);
    if (property == properties_.end()) {
        throwUnexistent(readFailure, name);
    }
    return property->second;
}

bool PropertyManagerImpl::hasProperty(const WideString& name) const {
    return properties_.find(name) != properties_.end();
}

void PropertyManagerImpl::setProperty(const WideString& name, const WideString& value) {
    const auto property = properties_.find(name);
    if (property != properties_.end()) {
        properties_.erase(property);
    }
    properties_.emplace(name, value);
}

void PropertyManagerImpl::clearProperty(const WideString& name) {
    const auto property = properties_.find(name);
    if (property == properties_.end()) {
        throwUnexistent(clearFailure, name);
    }
    properties_.erase(property);
}

} // namespace ZOL::Framework::Management
