#include "steps/ObjectFault.h"

#include <typeinfo>

#include <cxxabi.h>

namespace backendcheck {

using ZOL::Framework::GenericLogger::LoggerBackend;
using ZOL::Framework::GenericLogger::LoggingChannel;

namespace {

template <typename Base>
std::string faultOf(Base* object) {
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

} // namespace

std::string objectFault(LoggerBackend* object) {
    return faultOf(object);
}

std::string objectFault(LoggingChannel* object) {
    return faultOf(object);
}

const char* const goodBackend = "the object is a LoggerBackend";

} // namespace backendcheck
