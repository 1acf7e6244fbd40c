#pragma once

#include <string>

namespace ZOL::Framework {

/// The module's private string to which exported classes hold a pointer.
struct HeapString {
    std::string text;
};

} // namespace ZOL::Framework
