#include "ZOL/Framework/GenericLogger/DisplayName.h"

#include <new>

#include <boost/core/demangle.hpp>

namespace ZOL::Framework::GenericLogger {

std::string displayName(const std::type_info& type) {
    const boost::core::scoped_demangled_name demangled(type.name());
    if (demangled.get() == nullptr) {
        throw std::bad_alloc();
    }
    // Some compilers' names carry the key word of the declaration already.
    std::string name = demangled.get();
    for (const std::string keyword : {"class ", "struct "}) {
        if (name.compare(0, keyword.size(), keyword) == 0) {
            name.erase(0, keyword.size());
        }
    }
    return "class " + name;
}

} // namespace ZOL::Framework::GenericLogger
