#pragma once

// The allocation functions, which runtime/Memory.cpp defines.

#pragma GCC system_header
#include <vcruntime_exception.h>

namespace std {

struct nothrow_t {
    explicit nothrow_t() = default;
};
extern const nothrow_t nothrow;

enum class align_val_t : size_t {};

using new_handler = void(__cdecl*)();
new_handler __cdecl get_new_handler() noexcept;
new_handler __cdecl set_new_handler(new_handler handler) noexcept;

} // namespace std

void* __cdecl operator new(size_t size);
void* __cdecl operator new(size_t size, const std::nothrow_t&) noexcept;
void* __cdecl operator new(size_t size, std::align_val_t alignment);
void* __cdecl operator new(size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept;
void* __cdecl operator new[](size_t size);
void* __cdecl operator new[](size_t size, const std::nothrow_t&) noexcept;
void* __cdecl operator new[](size_t size, std::align_val_t alignment);
void* __cdecl operator new[](size_t size, std::align_val_t alignment,
                             const std::nothrow_t&) noexcept;
void __cdecl operator delete(void* block) noexcept;
void __cdecl operator delete(void* block, size_t size) noexcept;
void __cdecl operator delete(void* block, const std::nothrow_t&) noexcept;
void __cdecl operator delete(void* block, std::align_val_t alignment) noexcept;
void __cdecl operator delete(void* block, size_t size, std::align_val_t alignment) noexcept;
void __cdecl operator delete(void* block, std::align_val_t alignment,
                             const std::nothrow_t&) noexcept;
void __cdecl operator delete[](void* block) noexcept;
void __cdecl operator delete[](void* block, size_t size) noexcept;
void __cdecl operator delete[](void* block, const std::nothrow_t&) noexcept;
void __cdecl operator delete[](void* block, std::align_val_t alignment) noexcept;
void __cdecl operator delete[](void* block, size_t size, std::align_val_t alignment) noexcept;
void __cdecl operator delete[](void* block, std::align_val_t alignment,
                               const std::nothrow_t&) noexcept;

inline void* __cdecl operator new(size_t, void* place) noexcept {
    return place;
}
inline void* __cdecl operator new[](size_t, void* place) noexcept {
    return place;
}
inline void __cdecl operator delete(void*, void*) noexcept {}
inline void __cdecl operator delete[](void*, void*) noexcept {}
