#pragma once

#include <string>
#include <type_traits>

#include "ZOL/Framework/Export.h"

// WideString is the one type of the standard library that crosses the boundary. Its layout must be
// the module's: of GNU's library that of the present ABI, of Visual C++'s that without iterator
// debugging.
#if defined(_MSVC_STL_VERSION) && _ITERATOR_DEBUG_LEVEL != 0
#error "ZOL Framework's properties need _ITERATOR_DEBUG_LEVEL=0, as the framework module has it"
#endif
#if defined(__GLIBCXX__) && !_GLIBCXX_USE_CXX11_ABI
#error "ZOL Framework's properties need _GLIBCXX_USE_CXX11_ABI=1, as the framework module has it"
#endif

namespace ZOL::Framework::Management {

/// A counted sequence of 16-bit units, which may be empty and may hold a zero unit. Modules that
/// exchange it must share one standard library with the framework.
using WideString = std::conditional_t<sizeof(wchar_t) == 2, std::wstring, std::u16string>;

/// The process's table of named texts, which Framework::propertyManager gives out. Never to be
/// deleted. Names are told apart unit by unit: case counts, and so does what stands behind a zero
/// unit; the empty name is a name like any other.
///
/// Nothing here locks. Threads that share the store take turns by a lock of their own, for its
/// first use as well. Operations throw std::bad_alloc.
///
/// The order of the virtual operations is a binary contract.
class PropertyManager {
public:
    virtual ~PropertyManager() = default;

    /// The stored value itself, not a copy: valid until that very name is set or cleared; other
    /// names may come and go. Throws a FrameworkException if there is no such property.
    virtual const WideString& readProperty(const WideString& name) const = 0;

    /// Allocates nothing and throws nothing.
    virtual bool hasProperty(const WideString& name) const = 0;

    /// Stores copies of name and value. An earlier entry of that name goes before the copies are
    /// made: references to its value end here, the value must not be such a reference, and without
    /// memory for the copies the name is absent afterwards.
    virtual void setProperty(const WideString& name, const WideString& value) = 0;

    /// Throws a FrameworkException if there is no such property.
    virtual void clearProperty(const WideString& name) = 0;
};

static_assert(sizeof(PropertyManager) == sizeof(void*), "modules know it as a virtual table");

} // namespace ZOL::Framework::Management
