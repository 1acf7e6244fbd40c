#include "live/Heap.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <cstdlib>

#include "live/CrashHandler.h"
#include "live/HeapHooks.h"
#include "live/ThisProcess.h"

namespace backendcheck {

namespace {

// What freed blocks are filled with: an address in the middle of an area that cannot be accessed.
// Pointers in freed objects, and addresses near to them, are recognised by it.
constexpr std::uintptr_t unreadableBegin = 0x5A4F4C000000;
constexpr std::size_t unreadableSize = std::size_t{16} << 20U;
constexpr std::uint64_t filling = unreadableBegin + unreadableSize / 2;

/// Bytes that the system's heap needs for a block of any size, approximately.
constexpr std::size_t overhead = 32;

// Larger blocks are texts and not objects. To keep them takes much memory, and fragments the rest.
constexpr std::size_t maxKeptSize = std::size_t{64} << 10U;

std::atomic<std::ptrdiff_t> used{0};
std::atomic<std::ptrdiff_t> maxUsed{0};
std::atomic<bool> isReleasedBlockChanged{false};

void fill(void* block, std::size_t size) {
    std::fill_n(static_cast<std::uint64_t*>(block), size / sizeof(filling), filling);
}

bool isFilled(const void* block, std::size_t size) {
    const auto* const words = static_cast<const std::uint64_t*>(block);
    return std::all_of(words, words + size / sizeof(filling),
                       [](std::uint64_t word) { return word == filling; });
}

/// The last blocks that were freed. Adding one releases the oldest if there are too many.
class KeptBlocks {
public:
    void add(void* block, std::size_t size) {
        memory_ += size + overhead;
        release(blocks_[end_++ % blocks_.size()].exchange(block));
        while (memory_ > maxMemory && releaseOldest()) {
        }
    }

    std::size_t memory() const { return memory_; }

    bool isAnyChanged() const {
        return std::any_of(blocks_.begin(), blocks_.end(), [](void* block) {
            return block != nullptr && !isFilled(block, sizeOfBlock(block));
        });
    }

private:
    static constexpr std::size_t maxMemory = std::size_t{256} << 20U;
    static constexpr std::size_t maxCount = std::size_t{1} << 20U;

    bool releaseOldest() {
        std::size_t oldest = begin_;
        if (oldest >= end_) {
            return false;
        }
        if (begin_.compare_exchange_strong(oldest, oldest + 1)) {
            release(blocks_[oldest % blocks_.size()].exchange(nullptr));
        }
        return true;
    }

    void release(void* block) {
        if (block == nullptr) {
            return;
        }
        const std::size_t size = sizeOfBlock(block);
        if (!isFilled(block, size)) {
            isReleasedBlockChanged = true;
        }
        // The block that gets this memory next must not look like one that is freed twice.
        std::fill_n(static_cast<char*>(block), size, '\0');
        memory_ -= size + overhead;
        releaseBlock(block);
    }

    std::array<std::atomic<void*>, maxCount> blocks_;
    std::atomic<std::size_t> begin_;
    std::atomic<std::size_t> end_;
    std::atomic<std::size_t> memory_;
};

KeptBlocks keptBlocks;

} // namespace

void keepFreedBlocks() {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the address is the point
    reserveUnreadable(reinterpret_cast<void*>(unreadableBegin), unreadableSize);
    hookHeap();
}

std::ptrdiff_t usedHeap() {
    return used;
}

std::size_t maxUsedHeap() {
    return static_cast<std::size_t>(maxUsed);
}

std::size_t keptHeap() {
    return keptBlocks.memory();
}

bool isFreedBlockChanged() {
    return isReleasedBlockChanged || keptBlocks.isAnyChanged();
}

const char* faultOfFreedBlock(const void* address) {
    const std::uintptr_t offset = reinterpret_cast<std::uintptr_t>(address) - unreadableBegin;
    return offset < unreadableSize ? "it uses an object or other memory that was freed before"
                                   : nullptr;
}

void countAllocated(std::size_t size) {
    const std::ptrdiff_t now = used += static_cast<std::ptrdiff_t>(size);
    std::ptrdiff_t max = maxUsed;
    while (now > max && !maxUsed.compare_exchange_weak(max, now)) {
    }
}

void countFreed(std::size_t size) {
    used -= static_cast<std::ptrdiff_t>(size);
}

void keepBlock(void* block, std::size_t size) {
    if (size >= sizeof(filling) && isFilled(block, sizeof(filling))) {
        crashRecord->crashed("it frees a block of memory twice");
        std::abort();
    }
    if (size > maxKeptSize) {
        releaseBlock(block);
        return;
    }
    fill(block, size);
    keptBlocks.add(block, size);
}

} // namespace backendcheck
