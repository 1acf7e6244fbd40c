#include "GuardedArrays.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

namespace support::GuardedArrays {

namespace {

struct State {
    std::size_t overflows = 0;
    std::size_t allocations = 0;
    std::size_t allocated = 0;
    bool fails = false;
};

State state;

} // namespace

std::size_t overflows() {
    return state.overflows;
}

std::size_t allocations() {
    return state.allocations;
}

std::size_t allocated() {
    return state.allocated;
}

void fail(bool fails) {
    state.fails = fails;
}

#if ZOL_TEST_GUARDED_ARRAYS

namespace {

constexpr std::size_t headerSize = alignof(std::max_align_t); // for the size of the array
constexpr std::size_t guardSize = 4096;
constexpr char guardByte = '\x5A';

void* allocate(std::size_t size) {
    void* const memory = state.fails ? nullptr : std::malloc(headerSize + size + guardSize);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    ++state.allocations;
    ++state.allocated;
    char* const block = static_cast<char*>(memory);
    std::memcpy(block, &size, sizeof size);
    std::memset(block + headerSize + size, guardByte, guardSize);
    return block + headerSize;
}

void release(void* array) {
    if (array == nullptr) {
        return;
    }
    char* const block = static_cast<char*>(array) - headerSize;
    std::size_t size = 0;
    std::memcpy(&size, block, sizeof size);
    const char* const guard = block + headerSize + size;
    if (!std::all_of(guard, guard + guardSize, [](char byte) { return byte == guardByte; })) {
        ++state.overflows;
    }
    --state.allocated;
    std::free(block);
}

} // namespace

#endif

} // namespace support::GuardedArrays

#if ZOL_TEST_GUARDED_ARRAYS

void* operator new[](std::size_t size) {
    return support::GuardedArrays::allocate(size);
}

void operator delete[](void* array) noexcept {
    support::GuardedArrays::release(array);
}

void operator delete[](void* array, std::size_t) noexcept {
    support::GuardedArrays::release(array);
}

#endif
