#pragma once

#include "ZOL/Framework/Export.h"

namespace ZOL::Framework {

struct HeapString;

namespace Exceptions {

/// Root of the framework's own exceptions, those of the logger and of the registry aside; catch it
/// by reference. It has no base class, so a handler for std::exception does not catch it.
///
/// Each object owns its message. Constructors and assignment throw std::bad_alloc. The order of the
/// virtual operations, the destructor alone, is a binary contract.
class ZOL_FRAMEWORK_API FrameworkException {
public:
    FrameworkException();

    /// Copies message up to its first zero; message must not be null.
    FrameworkException(const char* message);

    FrameworkException(const FrameworkException& other);
    virtual ~FrameworkException();

    /// Takes the message over and nothing else: the object stays of its own class. A failure
    /// leaves it as it was.
    const FrameworkException& operator=(const FrameworkException& other);

    /// Zero-terminated and never null; valid until the object is assigned to or destroyed.
    const char* message() const;

private:
    HeapString* message_;
};

static_assert(sizeof(FrameworkException) == 2 * sizeof(void*),
              "modules know it as a virtual table and one pointer");

} // namespace Exceptions

} // namespace ZOL::Framework
