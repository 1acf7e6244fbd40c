#include "ZOL/Framework/Management/PropertyManagerImpl.h"

#include <string_view>

#include "ZOL/Framework/Exceptions/UnexistentProperty.h"
#include "ZOL/Platform/NarrowString.h"

namespace ZOL::Framework::Management {

namespace {

constexpr std::string_view readMessage = "Trying to read unexistent property: ";
constexpr std::string_view clearMessage = "Trying to clear an unexistent property: ";

/// Narrows message and name together: if the name cannot be narrowed, the whole text is empty.
[[noreturn]] void throwUnexistent(std::string_view message, const WideString& name) {
    WideString text(message.begin(), message.end());
    text += name;
    throw Exceptions::UnexistentProperty(Platform::narrowString(text.c_str()).c_str());
}

} // namespace

const WideString& PropertyManagerImpl::readProperty(const WideString& name) const {
    const auto property = properties_.find(name);
    if (property == properties_.end()) {
        throwUnexistent(readMessage, name);
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
        throwUnexistent(clearMessage, name);
    }
    properties_.erase(property);
}

} // namespace ZOL::Framework::Management
