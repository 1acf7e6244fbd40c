#pragma once

#include "ZOL/Framework/Export.h"

// what() needs the run-time type information of derived classes, which users compile.
#if !defined(__cpp_rtti)
#error "ZOL Framework's LoggerException needs run-time type information"
#endif

namespace ZOL::Framework::GenericLogger {

struct LoggerExceptionImpl;

/// Base class of the logging exceptions: message, source file and line of the throw. It has no base
/// class, so a handler for std::exception or FrameworkException does not catch it.
///
/// Constructors and copies throw std::bad_alloc. One object belongs to one thread at a time. The
/// order of the virtual operations is a binary contract.
class ZOL_FRAMEWORK_API LoggerException {
public:
    /// Creates an exception with an empty message. The first argument is the file name.
    LoggerException(const char* filename, int lineNumber);
    LoggerException(const char* message, const char* filename, int lineNumber);
    LoggerException(const LoggerException& other);
    const LoggerException& operator=(const LoggerException& other);
    virtual ~LoggerException();

    /// Returns the message, never null. It is valid until the exception is assigned to or
    /// destroyed.
    virtual const char* message() const;

    /// Returns one line with the name of the most derived class, file, line and message. The first
    /// call builds the text and stores it; copies keep it, and later changes of file or line do not
    /// change it. Never throws, never null; empty if there is no memory to build it. Valid until
    /// the exception is assigned to or destroyed.
    virtual const char* what() const;

    /// Returns the file name, never null. It is valid until the file name changes or the exception
    /// is assigned to or destroyed.
    const char* filename() const;
    void filename(const char* filename);

    int lineNumber() const;
    void lineNumber(int lineNumber);

private:
    LoggerExceptionImpl* impl_;
};

static_assert(sizeof(LoggerException) == 2 * sizeof(void*),
              "the size is part of the binary contract");

} // namespace ZOL::Framework::GenericLogger
