#pragma once

#include "ZOL/Framework/Export.h"

namespace ZOL::Framework {

struct HeapString;

/// A text that modules can exchange even if they share neither a string type nor a heap. The object
/// is one pointer, and the framework performs all operations. The text is a sequence of bytes
/// without a defined encoding.
///
/// Each object owns its text. No operation takes a lock: several threads may read an object as long
/// as no thread changes it. Constructors, assignment and append throw std::bad_alloc, or
/// std::length_error if the text is longer than a string can be.
class StringHolder {
public:
    ZOL_FRAMEWORK_API StringHolder();

    /// Copies text up to its first zero. Passing null is undefined.
    ZOL_FRAMEWORK_API StringHolder(const char* text);

    ZOL_FRAMEWORK_API StringHolder(const StringHolder& other);
    ZOL_FRAMEWORK_API ~StringHolder();

    ZOL_FRAMEWORK_API const StringHolder& operator=(const StringHolder& other);
    ZOL_FRAMEWORK_API const StringHolder& operator+=(const StringHolder& other);

    /// Returns the zero-terminated text, never null. It is valid until the object is assigned to,
    /// appended to or destroyed.
    ZOL_FRAMEWORK_API const char* c_str() const;

private:
    HeapString* holder_;
};

static_assert(sizeof(StringHolder) == sizeof(void*), "the size is part of the binary contract");

} // namespace ZOL::Framework
