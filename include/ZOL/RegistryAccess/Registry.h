#pragma once

#include <cstdint>
#include <string>
#include <vector>

#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#include <windows.h>

namespace ZOL::RegistryAccess {

/// One open key of the Windows registry. Compiled into whoever uses it: nothing of it crosses a
/// module's boundary.
///
/// Texts are bytes in the system's ANSI code page. Copies of a node share its key, which closes
/// when the last of them goes. Nothing here locks: nodes that share a key stay on one thread at a
/// time.
///
/// Failures are exceptions, each told by its own class below. A node that was made by the default
/// constructor holds no key: it can be assigned to, named and destroyed, most operations throw
/// NotInitialized, and hasSubKey, copying and assigning from it must not be tried.
class Registry {
public:
    using Bytes = std::vector<unsigned char>;

    class GenericRegistryError;
    class AccessDenied;
    class OpenError;
    class CreationError;
    class NotFound;
    class NotInitialized;

    /// A node without a key, named "NOT INITIALIZED!".
    Registry();

    Registry(const Registry& other);

    /// Shares the other's key from here on. Meant for nodes without a key: one that has a key does
    /// not give it back, and that key stays open until the process ends. The same holds for
    /// assigning a node to itself.
    Registry& operator=(const Registry& other);

    ~Registry();

    /// Opens an existing key; the node is named after the last component of the path, which has
    /// backslashes between its components. Throws AccessDenied, OpenError.
    static Registry open(HKEY root, const std::string& path);

    /// Opens a key, made with all that lies on the way if it is not there; named as by open.
    /// Throws AccessDenied, CreationError.
    static Registry create(HKEY root, const std::string& path);

    std::string getName() const;

    /// Whether the sub key can be opened.
    bool hasSubKey(const std::string& name) const;

    /// Opens an existing sub key; the node is named with the whole argument. Throws NotInitialized,
    /// AccessDenied, OpenError.
    Registry openSubKey(const std::string& name) const;

    /// Opens a sub key, made if it is not there; named as by openSubKey. Throws NotInitialized,
    /// AccessDenied, CreationError.
    Registry createSubKey(const std::string& name);

    /// Deletes a sub key with everything below it. Throws NotInitialized, AccessDenied, and
    /// NotFound for any other reason.
    void deleteSubKey(const std::string& name);

    /// Whether the value is there and can be read; the platform ignores case. The empty name is
    /// the key's default value. Throws NotInitialized.
    bool hasValue(const std::string& name) const;

    /// The value's bytes up to the first zero, whatever its type. Found by walking all values and
    /// comparing names byte by byte, case included: a value on the way with a name of more than
    /// 260 bytes or with more than 261 bytes of data ends the search. Throws NotInitialized,
    /// AccessDenied, NotFound, and OpenError for such a value.
    Bytes getStringValue(const std::string& name) const;

    /// The value of a REG_DWORD; the platform ignores case. Throws NotInitialized, AccessDenied,
    /// and OpenError for a value that is absent or of another type.
    std::int32_t getIntValue(const std::string& name) const;

    /// Writes exactly these bytes as a REG_SZ, made if it is not there; a terminating zero is the
    /// caller's to put in. Always returns false. Throws NotInitialized, AccessDenied, NotFound,
    /// OpenError.
    bool updateStringValue(const std::string& name, const Bytes& value);

    /// Writes a REG_DWORD, made if it is not there. Always returns false. Throws NotInitialized,
    /// AccessDenied, NotFound, OpenError.
    bool updateIntValue(const std::string& name, std::int32_t value);

    /// Throws NotInitialized, AccessDenied, and NotFound for any other reason.
    void deleteValue(const std::string& name);

    /// All direct sub keys, each open until its last copy goes. All or nothing: one sub key that
    /// cannot be opened ends the listing. Throws NotInitialized, AccessDenied, OpenError.
    std::vector<Registry> getSubKeys() const;

    /// Copies values, their types included, into this key. Stops without a word at the first that
    /// cannot be read or written, or that is too long (see getStringValue). Throws NotInitialized
    /// if either node has no key.
    void copyValuesFrom(const Registry& otherNode);

    /// copyValuesFrom, then the same for each sub key, made here if it is not there. Deletes
    /// nothing. Throws what getSubKeys and createSubKey throw; what was copied so far stays.
    void copyFrom(const Registry& otherNode);

private:
    class HandleHolder;

    /// Takes over a reference that handle already counts.
    Registry(const std::string& name, HandleHolder* handle);

    /// A node with a cell of its own for a key that was just opened.
    static Registry adopt(const std::string& name, HKEY key);

    std::string name_;
    HandleHolder* handle_;
};

/// Root of the registry's errors: message, source file and line of the throw. It has no base class,
/// so a handler for std::exception does not catch it. Constructors and copies throw std::bad_alloc.
/// One object belongs to one thread at a time.
class Registry::GenericRegistryError {
public:
    GenericRegistryError(const char* message, const char* filename, int lineNumber);
    GenericRegistryError(const GenericRegistryError& other);
    GenericRegistryError& operator=(const GenericRegistryError& other);
    virtual ~GenericRegistryError();

    /// One line that names the most derived class, file, line and message. Built at the first call
    /// and kept, also by copies. Never throws, never null; empty if there was no memory to build
    /// it. Valid until the error is assigned to or destroyed.
    virtual const char* what() const;

    // Texts are never null, and valid until the error is assigned to or destroyed.
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

/// A search by enumeration ended without a find, or something could not be deleted.
class Registry::NotFound : public GenericRegistryError {
public:
    using GenericRegistryError::GenericRegistryError;
    NotFound(const NotFound&) = default;
    NotFound& operator=(const NotFound&) = default;
    ~NotFound() override = default;
};

/// An operation was called on a node without a key.
class Registry::NotInitialized : public GenericRegistryError {
public:
    using GenericRegistryError::GenericRegistryError;
    NotInitialized(const NotInitialized&) = default;
    NotInitialized& operator=(const NotInitialized&) = default;
    ~NotInitialized() override = default;
};

} // namespace ZOL::RegistryAccess
