#include <new.h>

#include <malloc.h>
#include <stdlib.h>

// One part of the allocation functions, which the build chooses. A program that defines an operator
// of its own must not get another object of the library with the same operator.

extern "C" int __cdecl _callnewh(size_t size);

#if defined(ZOL_PART_New)
void* operator new(size_t size) {
    for (;;) {
        if (void* const block = malloc(size ? size : 1)) {
            return block;
        }
        if (!_callnewh(size)) {
            throw std::bad_alloc();
        }
    }
}
#elif defined(ZOL_PART_NewArray)
void* operator new[](size_t size) {
    return operator new(size);
}
#elif defined(ZOL_PART_NewNothrow)
void* operator new(size_t size, const std::nothrow_t&) noexcept {
    try {
        return operator new(size);
    } catch (...) {
        return nullptr;
    }
}
#elif defined(ZOL_PART_NewArrayNothrow)
void* operator new[](size_t size, const std::nothrow_t&) noexcept {
    return operator new(size, std::nothrow);
}
#elif defined(ZOL_PART_Delete)
void operator delete(void* block) noexcept {
    free(block);
}
#elif defined(ZOL_PART_DeleteSized)
void operator delete(void* block, size_t) noexcept {
    operator delete(block);
}
#elif defined(ZOL_PART_DeleteNothrow)
void operator delete(void* block, const std::nothrow_t&) noexcept {
    operator delete(block);
}
#elif defined(ZOL_PART_DeleteArray)
void operator delete[](void* block) noexcept {
    operator delete(block);
}
#elif defined(ZOL_PART_DeleteArraySized)
void operator delete[](void* block, size_t) noexcept {
    operator delete[](block);
}
#elif defined(ZOL_PART_DeleteArrayNothrow)
void operator delete[](void* block, const std::nothrow_t&) noexcept {
    operator delete[](block);
}
#elif defined(ZOL_PART_Aligned)
void* operator new(size_t size, std::align_val_t alignment) {
    for (;;) {
        if (void* const block = _aligned_malloc(size ? size : 1, static_cast<size_t>(alignment))) {
            return block;
        }
        if (!_callnewh(size)) {
            throw std::bad_alloc();
        }
    }
}
void* operator new(size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    try {
        return operator new(size, alignment);
    } catch (...) {
        return nullptr;
    }
}
void* operator new[](size_t size, std::align_val_t alignment) {
    return operator new(size, alignment);
}
void* operator new[](size_t size, std::align_val_t alignment,
                     const std::nothrow_t& nothrow) noexcept {
    return operator new(size, alignment, nothrow);
}
void operator delete(void* block, std::align_val_t) noexcept {
    _aligned_free(block);
}
void operator delete(void* block, size_t, std::align_val_t) noexcept {
    _aligned_free(block);
}
void operator delete(void* block, std::align_val_t, const std::nothrow_t&) noexcept {
    _aligned_free(block);
}
void operator delete[](void* block, std::align_val_t) noexcept {
    _aligned_free(block);
}
void operator delete[](void* block, size_t, std::align_val_t) noexcept {
    _aligned_free(block);
}
void operator delete[](void* block, std::align_val_t, const std::nothrow_t&) noexcept {
    _aligned_free(block);
}
#endif
