#include "ScarceMemory.h"

#include <cstdlib>
#include <new>

namespace support::ScarceMemory {

namespace {

struct State {
    bool active = false;
    std::size_t failAt = 0;
    Kind kind = Kind::ForAMoment;
    std::size_t allocations = 0;
};

thread_local State state;

bool failsNow() {
    if (!state.active) {
        return false;
    }
    ++state.allocations;
    if (state.failAt == 0) {
        return false;
    }
    return state.kind == Kind::ForAMoment ? state.allocations == state.failAt
                                          : state.allocations >= state.failAt;
}

void* allocate(std::size_t size) noexcept {
    return failsNow() ? nullptr : std::malloc(size > 0 ? size : 1);
}

void* allocateOrThrow(std::size_t size) {
    void* const block = allocate(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

} // namespace

void start(std::size_t n, Kind kind) {
    state = {true, n, kind, 0};
}

std::size_t stop() {
    state.active = false;
    return state.allocations;
}

Pause::Pause() : wasActive_(state.active) {
    state.active = false;
}

Pause::~Pause() {
    state.active = wasActive_;
}

} // namespace support::ScarceMemory

using support::ScarceMemory::allocate;
using support::ScarceMemory::allocateOrThrow;

void* operator new(std::size_t size) {
    return allocateOrThrow(size);
}
void* operator new[](std::size_t size) {
    return allocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}
void operator delete(void* block) noexcept {
    std::free(block);
}
void operator delete[](void* block) noexcept {
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    std::free(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept {
    std::free(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
    std::free(block);
}
