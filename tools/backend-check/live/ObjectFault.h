#pragma once

#include <string>
#include <typeinfo>

#include <cxxabi.h>

namespace backendcheck {

/// Why an object that a plug-in returned is not derived from Base, or an empty text. Crashes if
/// there is no object at that address, and belongs into a step of its own for that reason.
template <typename Base>
std::string objectFault(Base* object) {
    // volatile: null if the class was compiled without run-time type information.
    const std::type_info* const volatile info = &typeid(*object);
    const std::type_info* const type = info;
    if (type == nullptr) {
        return {};
    }
    if (*type == typeid(Base)) { // which is abstract
        return "was destroyed already";
    }
    void* base = dynamic_cast<void*>(object);
    if (!type->__do_upcast(static_cast<const abi::__class_type_info*>(&typeid(Base)), &base)) {
        return "is of a class that is not derived from it";
    }
    if (base != object) {
        return "is a pointer to another of its bases: return it as the base class, without a cast";
    }
    return {};
}

} // namespace backendcheck
