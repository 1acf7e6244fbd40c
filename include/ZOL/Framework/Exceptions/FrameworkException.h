#pragma once

#include "ZOL/Framework/Export.h"

namespace ZOL::Framework {

struct HeapString;

namespace Exceptions {

/// Base class of the framework's exceptions, except those of the logger and of the registry. Catch
/// it by reference. It has no base class, so a handler for std::exception does not catch it.
///
/// Each object owns its message. Constructors and assignment throw std::bad_alloc. The destructor
/// is the only virtual operation; this is a binary contract.
class ZOL_FRAMEWORK_API FrameworkException {
public:
    FrameworkException();

    /// Copies message up to its first zero; message must not be null.
    FrameworkException(const char* message);

    FrameworkException(const FrameworkException& other);
    virtual ~FrameworkException();

    /// Copies the message only; the object keeps its class. If copying throws, the object is
    /// unchanged.
    const FrameworkException& operator=(const FrameworkException& other);

    /// Returns a zero-terminated text, never null. It is valid until the object is assigned to or
    /// destroyed.
    const char* message() const;

private:
    HeapString* message_;
};

static_assert(sizeof(FrameworkException) == 2 * sizeof(void*),
              "the size is part of the binary contract");

} // namespace Exceptions

} // namespace ZOL::Framework
