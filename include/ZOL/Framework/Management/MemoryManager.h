#pragma once

#include <cstddef>

#include "ZOL/Framework/Export.h"

/// One allocator and one table of named objects for all modules of the process. Any thread may call
/// any function.
namespace ZOL::Framework::Management::MemoryManager {

// allocate, reallocate and deallocate use the C library's heap, as the module's operator new does.
// They never throw. If memory is exhausted, they return null and set errno to ENOMEM. They take no
// lock of the library.

/// Returns a block of at least size bytes, of one byte if size is 0. The caller owns it; any module
/// may pass it to deallocate.
ZOL_FRAMEWORK_API void* allocate(std::size_t size);

/// Resizes the block and returns it, possibly at a new address. If block is null, the call is
/// allocate(size). If size is 0, the block is freed and the result is null. After a failure the old
/// block is unchanged and the caller still owns it.
ZOL_FRAMEWORK_API void* reallocate(void* block, std::size_t size);

/// Frees the block. Null is allowed.
ZOL_FRAMEWORK_API void deallocate(void* block);

/// Returns the object of the process with this name. The first call creates it with its factory;
/// later calls return the same pointer and do not run theirs. The library never destroys the
/// object, and it cannot be removed from the table.
///
/// The factory runs on the calling thread with the table's lock held. The lock is not recursive: a
/// factory that calls registerObject or findObject deadlocks, so create inner objects first. An
/// exception from the factory is passed to the caller, and nothing is registered.
///
/// If a factory returns null, the name stays registered with null: findObject returns null for it,
/// and each later registerObject runs its own factory and returns an object that is not in the
/// table.
///
/// Throws std::bad_alloc; if the table has no memory for an object that the factory has created,
/// the object is leaked. Throws boost::thread_resource_error if the lock cannot be acquired.
/// Passing null for either argument is undefined.
ZOL_FRAMEWORK_API void* registerObject(const char* name, void* (*factory)());

/// Returns the object with this name, or null if there is none. Takes the same lock. Throws
/// std::bad_alloc and boost::thread_resource_error.
ZOL_FRAMEWORK_API void* findObject(const char* name);

} // namespace ZOL::Framework::Management::MemoryManager
