#include "FailingAllocator.h"

#include <cstdlib>
#include <new>

namespace support::FailingAllocator {

namespace {

struct State {
    bool counting = false;
    std::size_t failAt = 0;
    Mode mode = Mode::Once;
    std::size_t allocations = 0;
    std::size_t failures = 0;
    std::ptrdiff_t blocksLeft = 0;
};

thread_local State state;

bool failsNow() {
    ++state.allocations;
    if (state.failAt == 0) {
        return false;
    }
    return state.mode == Mode::Once ? state.allocations == state.failAt
                                    : state.allocations >= state.failAt;
}

} // namespace

void start(std::size_t n, Mode mode) {
    state = {true, n, mode, 0, 0, 0};
}

void stop() {
    state.counting = false;
}

std::size_t allocations() {
    return state.allocations;
}

std::size_t failures() {
    return state.failures;
}

std::ptrdiff_t blocksLeft() {
    return state.blocksLeft;
}

Pause::Pause() : wasCounting_(state.counting) {
    state.counting = false;
}

Pause::~Pause() {
    state.counting = wasCounting_;
}

/// Null if the allocation fails.
static void* allocate(std::size_t size, std::size_t alignment) noexcept {
    if (state.counting && failsNow()) {
        ++state.failures;
        return nullptr;
    }
    void* const block =
        alignment <= alignof(std::max_align_t)
            ? std::malloc(size > 0 ? size : 1)
            : std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment);
    if (state.counting && block != nullptr) {
        ++state.blocksLeft;
    }
    return block;
}

static void* allocateOrThrow(std::size_t size, std::size_t alignment) {
    void* const block = allocate(size, alignment);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

static void release(void* block) noexcept {
    if (state.counting && block != nullptr) {
        --state.blocksLeft;
    }
    std::free(block);
}

} // namespace support::FailingAllocator

using support::FailingAllocator::allocate;
using support::FailingAllocator::allocateOrThrow;
using support::FailingAllocator::release;

void* operator new(std::size_t size) {
    return allocateOrThrow(size, 1);
}
void* operator new[](std::size_t size) {
    return allocateOrThrow(size, 1);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size, 1);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size, 1);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return allocateOrThrow(size, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
    return allocateOrThrow(size, static_cast<std::size_t>(alignment));
}

void operator delete(void* block) noexcept {
    release(block);
}
void operator delete[](void* block) noexcept {
    release(block);
}
void operator delete(void* block, std::size_t) noexcept {
    release(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    release(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept {
    release(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
    release(block);
}
void operator delete(void* block, std::align_val_t) noexcept {
    release(block);
}
void operator delete[](void* block, std::align_val_t) noexcept {
    release(block);
}
void operator delete(void* block, std::size_t, std::align_val_t) noexcept {
    release(block);
}
void operator delete[](void* block, std::size_t, std::align_val_t) noexcept {
    release(block);
}
