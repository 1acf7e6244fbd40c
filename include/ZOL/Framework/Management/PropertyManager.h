#pragma once

#include <string>
#include <type_traits>

#include "ZOL/Framework/Export.h"

// WideString is the only type of the standard library that crosses the boundary. All modules must
// have the same layout of it: that of the current ABI of GNU's library, or that of Visual C++'s
// library without iterator debugging.
#if defined(_MSVC_STL_VERSION) && _ITERATOR_DEBUG_LEVEL != 0
#error "ZOL Framework's properties need _ITERATOR_DEBUG_LEVEL=0, as the framework module has it"
#endif
#if defined(__GLIBCXX__) && !_GLIBCXX_USE_CXX11_ABI
#error "ZOL Framework's properties need _GLIBCXX_USE_CXX11_ABI=1, as the framework module has it"
#endif

namespace ZOL::Framework::Management {

/// A counted sequence of 16-bit units. It may be empty and may contain zero units. Modules that
/// exchange it must use the same standard library as the framework.
using WideString = std::conditional_t<sizeof(wchar_t) == 2, std::wstring, std::u16string>;

/// The process's table of named texts. Framework::propertyManager returns it; callers must not
/// delete it. Names are compared unit by unit: they are case-sensitive, units after a zero unit
/// count too, and the empty name is valid.
///
/// No operation takes a lock. Threads that share the store must use a lock of their own, also for
/// its first use. Operations throw std::bad_alloc.
///
/// The order of the virtual operations is a binary contract.
class PropertyManager {
public:
    virtual ~PropertyManager() = default;

    /// Returns the stored value, not a copy. The reference is valid until this name is set or
    /// cleared; changes of other names do not affect it. Throws FrameworkException if there is no
    /// such property.
    virtual const WideString& readProperty(const WideString& name) const = 0;

    /// Returns whether the property exists. Allocates nothing and throws nothing.
    virtual bool hasProperty(const WideString& name) const = 0;

    /// Stores copies of name and value. An existing entry with this name is erased before the
    /// copies are made. References to its value become invalid, so value must not be one of them.
    /// If there is no memory for the copies, the property does not exist afterwards.
    virtual void setProperty(const WideString& name, const WideString& value) = 0;

    /// Removes the property. Throws FrameworkException if there is no such property.
    virtual void clearProperty(const WideString& name) = 0;
};

static_assert(sizeof(PropertyManager) == sizeof(void*), "the size is part of the binary contract");

} // namespace ZOL::Framework::Management
