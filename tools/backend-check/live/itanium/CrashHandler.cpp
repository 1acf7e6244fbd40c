#include "live/CrashHandler.h"

#include <cstdlib>
#include <memory>
#include <typeinfo>

#include <cxxabi.h>

namespace backendcheck {

std::string typeOfCurrentException() {
    const std::type_info* const type = abi::__cxa_current_exception_type();
    if (type == nullptr) {
        return {};
    }
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> name(
        abi::__cxa_demangle(type->name(), nullptr, nullptr, &status), &std::free);
    return name != nullptr ? name.get() : type->name();
}

void suppressRuntimeDialogs() {}

} // namespace backendcheck
