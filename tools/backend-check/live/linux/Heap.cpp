// Replaces the functions of the C library that allocate and free: the dynamic linker binds all
// calls in the process to these, those of plug-ins and of the C++ library included.

#include "live/Heap.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <limits>

#include "live/HeapHooks.h"

// The C library's own functions under names that stay.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);
}
// NOLINTEND(bugprone-reserved-identifier)

namespace backendcheck {

namespace {

/// Before each block. Blocks without the mark are not from here: the pointer is wrong, and the C
/// library reports it.
struct Header {
    std::uint64_t size;
    std::uint32_t offset; // of the block in what the C library allocated
    std::uint32_t mark;
};
constexpr std::uint32_t mark = 0x5A4F4C21;
constexpr std::size_t minAlignment = sizeof(Header);
static_assert(minAlignment == alignof(std::max_align_t));

std::atomic<bool> isHooked{false};

Header* headerOf(void* block) {
    return static_cast<Header*>(block) - 1;
}

void* allocate(std::size_t size, std::size_t alignment = minAlignment) {
    const std::size_t offset = std::max(alignment, minAlignment);
    const std::size_t max = std::numeric_limits<std::ptrdiff_t>::max() - offset - sizeof(Header);
    if (size > max) {
        errno = ENOMEM;
        return nullptr;
    }
    // Whole words, which can be overwritten.
    const std::size_t rounded = (size + sizeof(std::uint64_t) - 1) & ~(sizeof(std::uint64_t) - 1);
    void* const area = alignment <= minAlignment ? __libc_malloc(rounded + offset)
                                                 : __libc_memalign(alignment, rounded + offset);
    if (area == nullptr) {
        return nullptr;
    }
    void* const block = static_cast<char*>(area) + offset;
    *headerOf(block) = {rounded, static_cast<std::uint32_t>(offset), mark};
    countAllocated(rounded);
    return block;
}

void deallocate(void* block) {
    if (block == nullptr) {
        return;
    }
    const Header& header = *headerOf(block);
    if (header.mark != mark) {
        __libc_free(block);
        return;
    }
    countFreed(header.size);
    if (isHooked) {
        keepBlock(block, header.size);
    } else {
        releaseBlock(block);
    }
}

std::size_t usableSize(void* block) {
    return block != nullptr && headerOf(block)->mark == mark ? headerOf(block)->size : 0;
}

} // namespace

void hookHeap() {
    isHooked = true;
}

std::size_t sizeOfBlock(void* block) {
    return headerOf(block)->size;
}

void releaseBlock(void* block) {
    Header& header = *headerOf(block);
    header.mark = 0;
    __libc_free(static_cast<char*>(block) - header.offset);
}

} // namespace backendcheck

// The C library's own names of parameters are reserved.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
#pragma GCC visibility push(default)
extern "C" {

void* malloc(std::size_t size) noexcept {
    return backendcheck::allocate(size);
}

void free(void* block) noexcept {
    backendcheck::deallocate(block);
}

void* calloc(std::size_t count, std::size_t size) noexcept {
    if (size != 0 && count > std::numeric_limits<std::size_t>::max() / size) {
        errno = ENOMEM;
        return nullptr;
    }
    void* const block = backendcheck::allocate(count * size);
    if (block != nullptr) {
        std::memset(block, 0, count * size);
    }
    return block;
}

void* realloc(void* block, std::size_t size) noexcept {
    if (block != nullptr && size == 0) {
        backendcheck::deallocate(block);
        return nullptr;
    }
    void* const larger = backendcheck::allocate(size);
    if (larger != nullptr && block != nullptr) {
        std::memcpy(larger, block, std::min(size, backendcheck::sizeOfBlock(block)));
        backendcheck::deallocate(block);
    }
    return larger;
}

void* memalign(std::size_t alignment, std::size_t size) noexcept {
    return backendcheck::allocate(size, alignment);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return backendcheck::allocate(size, alignment);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept {
    void* const made = backendcheck::allocate(size, alignment);
    if (made == nullptr) {
        return ENOMEM;
    }
    *block = made;
    return 0;
}

std::size_t malloc_usable_size(void* block) noexcept {
    return backendcheck::usableSize(block);
}

} // extern "C"
#pragma GCC visibility pop
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
