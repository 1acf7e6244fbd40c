#pragma once

#include <cstdint>
#include <string>
#include <vector>

#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#include <windows.h>

#include "ZOL/Requirements.h"

namespace ZOL::RegistryAccess {

/// One open key of the Windows registry. The class is compiled into its user; no part of it crosses
/// a module's boundary.
///
/// Texts are bytes in the system's ANSI code page. Copies of a node share its key, which is closed
/// when the last of them is destroyed. No operation takes a lock: only one thread at a time may use
/// nodes that share a key.
///
/// Failures are reported by the exception classes below. A node made by the default constructor has
/// no key. It can be assigned to, destroyed and asked for its name. Calling hasSubKey on it,
/// copying it and assigning from it are undefined; all other operations throw NotInitialized.
class Registry {
public:
    using Bytes = std::vector<unsigned char>;

    class GenericRegistryError;
    class AccessDenied;
    class OpenError;
    class CreationError;
    class NotFound;
    class NotInitialized;

    /// Creates a node without a key, named "NOT INITIALIZED!".
    Registry();

    Registry(const Registry& other);

    /// Shares the key of the other node. Meant for nodes without a key: a node that has one does
    /// not release it, so that key stays open until the process ends. This applies to
    /// self-assignment too.
    Registry& operator=(const Registry& other);

    ~Registry();

    /// Opens an existing key. The components of the path are separated by backslashes; the last one
    /// becomes the name of the node. Throws AccessDenied, OpenError.
    static Registry open(HKEY root, const std::string& path);

    /// Opens a key; creates it and its parent keys if necessary. The node is named as by open.
    /// Throws AccessDenied, CreationError.
    static Registry create(HKEY root, const std::string& path);

    std::string getName() const;

    /// Returns whether the sub key can be opened.
    bool hasSubKey(const std::string& name) const;

    /// Opens an existing sub key. The argument becomes the name of the node, backslashes included.
    /// Throws NotInitialized, AccessDenied, OpenError.
    Registry openSubKey(const std::string& name) const;

    /// Opens a sub key; creates it if necessary. The node is named as by openSubKey. Throws
    /// NotInitialized, AccessDenied, CreationError.
    Registry createSubKey(const std::string& name);

    /// Deletes a sub key and everything below it. Throws NotInitialized, AccessDenied, and NotFound
    /// for every other failure.
    void deleteSubKey(const std::string& name);

    /// Returns whether the value exists and can be read. The name is not case-sensitive; the empty
    /// name is the key's default value. Throws NotInitialized.
    bool hasValue(const std::string& name) const;

    /// Returns the value's bytes up to the first zero, for a value of any type. The values of the
    /// key are enumerated and their names compared byte by byte, case-sensitively. The search fails
    /// with OpenError at a value that has a name of more than 260 bytes or more than 261 bytes of
    /// data. Throws NotInitialized, AccessDenied, NotFound, OpenError.
    Bytes getStringValue(const std::string& name) const;

    /// Returns the value of a REG_DWORD. The name is not case-sensitive. Throws NotInitialized,
    /// AccessDenied, and OpenError if the value does not exist or has another type.
    std::int32_t getIntValue(const std::string& name) const;

    /// Writes exactly these bytes as a REG_SZ, and creates the value if necessary. The caller adds
    /// the terminating zero. Always returns false. Throws NotInitialized, AccessDenied, NotFound,
    /// OpenError.
    bool updateStringValue(const std::string& name, const Bytes& value);

    /// Writes a REG_DWORD, and creates the value if necessary. Always returns false. Throws
    /// NotInitialized, AccessDenied, NotFound, OpenError.
    bool updateIntValue(const std::string& name, std::int32_t value);

    /// Deletes the value. Throws NotInitialized, AccessDenied, and NotFound for every other
    /// failure.
    void deleteValue(const std::string& name);

    /// Opens all direct sub keys and returns them. If one of them cannot be opened, the call throws
    /// and returns none. Throws NotInitialized, AccessDenied, OpenError.
    std::vector<Registry> getSubKeys() const;

    /// Copies the other key's values and their types into this key. Stops silently at the first
    /// value that cannot be read or written, or that is too long (see getStringValue). Throws
    /// NotInitialized if one of the nodes has no key.
    void copyValuesFrom(const Registry& otherNode);

    /// Calls copyValuesFrom, then copies each sub key in the same way and creates it here if
    /// necessary. Deletes nothing. Throws what getSubKeys and createSubKey throw; what has been
    /// copied until then stays.
    void copyFrom(const Registry& otherNode);

private:
    class HandleHolder;

    /// Takes ownership of one reference that handle already counts.
    Registry(const std::string& name, HandleHolder* handle);

    /// Returns a node that owns the open key. Closes the key if memory runs out.
    static Registry adopt(const std::string& name, HKEY key);

    std::string name_;
    HandleHolder* handle_;
};

/// Base class of the registry's errors: message, source file and line of the throw. It has no base
/// class, so a handler for std::exception does not catch it. Constructors and copies throw
/// std::bad_alloc. One object belongs to one thread at a time.
class Registry::GenericRegistryError {
public:
    GenericRegistryError(const char* message, const char* filename, int lineNumber);
    GenericRegistryError(const GenericRegistryError& other);
    GenericRegistryError& operator=(const GenericRegistryError& other);
    virtual ~GenericRegistryError();

    /// Returns one line with the name of the most derived class, file, line and message. The first
    /// call builds the text and stores it; copies keep it. Never throws, never null; empty if there
    /// is no memory to build it. Valid until the error is assigned to or destroyed.
    virtual const char* what() const;

    // The texts are never null. They are valid until the error is assigned to or destroyed.
    const char* message() const;
    const char* filename() const;
    int lineNumber() const;

private:
    struct Record;

    Record* record_;
};

/// The platform refused access.
class Registry::AccessDenied : public GenericRegistryError {
public:
    using GenericRegistryError::GenericRegistryError;
    AccessDenied(const AccessDenied&) = default;
    AccessDenied& operator=(const AccessDenied&) = default;
    ~AccessDenied() override = default;
};

/// A key or value could not be opened, read or written, or a value is of the wrong type.
class Registry::OpenError : public GenericRegistryError {
public:
    using GenericRegistryError::GenericRegistryError;
    OpenError(const OpenError&) = default;
    OpenError& operator=(const OpenError&) = default;
    ~OpenError() override = default;
};

/// A key could not be created.
class Registry::CreationError : public GenericRegistryError {
public:
    using GenericRegistryError::GenericRegistryError;
    CreationError(const CreationError&) = default;
    CreationError& operator=(const CreationError&) = default;
    ~CreationError() override = default;
};

/// An enumeration did not find the value, or a key or value could not be deleted.
class Registry::NotFound : public GenericRegistryError {
public:
    using GenericRegistryError::GenericRegistryError;
    NotFound(const NotFound&) = default;
    NotFound& operator=(const NotFound&) = default;
    ~NotFound() override = default;
};

/// An operation was called on a node that has no key.
class Registry::NotInitialized : public GenericRegistryError {
public:
    using GenericRegistryError::GenericRegistryError;
    NotInitialized(const NotInitialized&) = default;
    NotInitialized& operator=(const NotInitialized&) = default;
    ~NotInitialized() override = default;
};

} // namespace ZOL::RegistryAccess
