#pragma once

#include <string>

namespace ZOL::Framework {

/// A string of the module's own behind the pointer that classes of the boundary hold.
struct HeapString {
    std::string text;
};

} // namespace ZOL::Framework
