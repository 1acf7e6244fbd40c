#pragma once

#include "ZOL/Framework/Export.h"

// A derived class that was compiled without has no name that what could tell.
#if !defined(__cpp_rtti)
#error "ZOL Framework's LoggerException needs run-time type information"
#endif

namespace ZOL::Framework::GenericLogger {

struct LoggerExceptionImpl;

/// Root of the logging exceptions: message, source file and line of the throw. It has no base
/// class, so a handler for std::exception or FrameworkException does not catch it.
///
/// Constructors and copies throw std::bad_alloc. One object belongs to one thread at a time. The
/// order of the virtual operations is a binary contract.
class ZOL_FRAMEWORK_API LoggerException {
public:
    /// An exception with an empty message; the first argument is the file name.
    LoggerException(const char* filename, int lineNumber);
    LoggerException(const char* message, const char* filename, int lineNumber);
    LoggerException(const LoggerException& other);
    const LoggerException& operator=(const LoggerException& other);
    virtual ~LoggerException();

    /// Never null; valid until the exception is assigned to or destroyed.
    virtual const char* message() const;

    /// One line that names the most derived class, file, line and message. Built at the first call
    /// and kept, also by copies: later changes of file or line do not show. Never throws, never
    /// null; empty if there was no memory to build it. Valid until the exception is assigned to or
    /// destroyed.
    virtual const char* what() const;

    /// Never null; valid until the file name changes or the exception is destroyed.
    const char* filename() const;
    void filename(const char* filename);

    int lineNumber() const;
    void lineNumber(int lineNumber);

private:
    LoggerExceptionImpl* impl_;
};

static_assert(sizeof(LoggerException) == 2 * sizeof(void*),
              "modules know it as a virtual table and one pointer");

} // namespace ZOL::Framework::GenericLogger
