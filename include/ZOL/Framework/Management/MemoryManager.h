#pragma once

#include <cstddef>

#include "ZOL/Framework/Export.h"

/// One allocator and one table of named objects for all modules of the process. Any thread may
/// call any function.
namespace ZOL::Framework::Management::MemoryManager {

// The C library's heap, the same that the module's operator new uses. Never throws: null and errno
// ENOMEM mean that there is no such block to be had. No lock of the library is taken.

/// A block of at least size bytes, of one byte if size is 0; the caller's, to be given to
/// deallocate by whichever module.
ZOL_FRAMEWORK_API void* allocate(std::size_t size);

/// The block in its new size, perhaps elsewhere. A null block is allocate(size). A size of 0 frees
/// the block and returns null. After any failure the old block is intact and still the caller's.
ZOL_FRAMEWORK_API void* reallocate(void* block, std::size_t size);

/// Frees the block; null is accepted.
ZOL_FRAMEWORK_API void deallocate(void* block);

/// The process's object of that name, made by the first caller's factory. Later callers get the
/// same pointer whatever factory they bring. The library never destroys the object, and there is
/// no way to take it out.
///
/// The factory runs on this thread with the table's lock held, which is not recursive: a factory
/// that comes to registerObject or findObject waits for itself for ever. Make inner objects first.
/// What the factory throws passes through, with nothing registered.
///
/// A factory that returns null occupies the name: findObject gives null for it from then on, and
/// each later caller runs its own factory and gets an object that nobody else can find.
///
/// Throws std::bad_alloc; if the table could not take a made object, the object is lost. Throws
/// boost::thread_resource_error if the lock cannot wait. Neither argument is tested for null.
ZOL_FRAMEWORK_API void* registerObject(const char* name, void* (*factory)());

/// The object of that name, or null if there is none. Takes the same lock; throws std::bad_alloc
/// and boost::thread_resource_error.
ZOL_FRAMEWORK_API void* findObject(const char* name);

} // namespace ZOL::Framework::Management::MemoryManager
