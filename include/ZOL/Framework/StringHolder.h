#pragma once

#include "ZOL/Framework/Export.h"

namespace ZOL::Framework {

struct HeapString;

/// A text that may pass between modules that share neither a string type nor a heap: one pointer,
/// with all work done by the framework. A plain sequence of bytes with no encoding of its own.
///
/// Each object owns its text. There is no lock: one object may be read from several threads while
/// nobody changes it. Constructors, assignment and append throw std::bad_alloc, or
/// std::length_error for a text that no string can hold.
class StringHolder {
public:
    ZOL_FRAMEWORK_API StringHolder();

    /// Copies text up to its first zero; text must not be null.
    ZOL_FRAMEWORK_API StringHolder(const char* text);

    ZOL_FRAMEWORK_API StringHolder(const StringHolder& other);
    ZOL_FRAMEWORK_API ~StringHolder();

    ZOL_FRAMEWORK_API const StringHolder& operator=(const StringHolder& other);
    ZOL_FRAMEWORK_API const StringHolder& operator+=(const StringHolder& other);

    /// The text, zero-terminated and never null; valid until the object is assigned to, appended
    /// to or destroyed.
    ZOL_FRAMEWORK_API const char* c_str() const;

private:
    HeapString* holder_;
};

static_assert(sizeof(StringHolder) == sizeof(void*), "modules know it as one pointer");

} // namespace ZOL::Framework
