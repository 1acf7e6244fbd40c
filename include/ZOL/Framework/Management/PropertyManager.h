#pragma once

#include <string>
#include <type_traits>

namespace ZOL::Framework::Management {

/// A counted sequence of 16-bit units, which may be empty and may hold a zero unit. Modules that
/// exchange it must share one standard library.
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

} // namespace ZOL::Framework::Management
