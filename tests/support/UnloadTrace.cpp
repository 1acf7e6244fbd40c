#include "UnloadTrace.h"

#include <array>
#include <atomic>
#include <new>

#include "UnloadRecorder.h"

namespace support {

namespace {

struct Block {
    void* address = nullptr;
    std::size_t size = 0;
    const char* tag = nullptr;
};

struct Event {
    const char* what = nullptr;
    std::size_t size = 0;
};

std::array<Block, 65536> blocks;
std::size_t blockCount = 0;
std::array<Event, 1024> events;
std::size_t eventCount = 0;
std::atomic<const char*> currentTag = nullptr;
std::atomic<bool> recording = false;

constexpr const char* lockEvent = "lock";

void record(const char* what, std::size_t size) {
    if (recording && eventCount < events.size()) {
        events[eventCount++] = {what, size};
    }
}

} // namespace

// Tags are set, and the module is unloaded, by one thread while no other uses it.

void UnloadRecorder::allocated(void* block, std::size_t size) {
    const char* const tag = currentTag;
    if (tag != nullptr && blockCount < blocks.size()) {
        blocks[blockCount++] = {block, size, tag};
    }
}

void UnloadRecorder::freed(void* block) {
    if (block == nullptr || (currentTag == nullptr && !recording)) {
        return;
    }
    for (std::size_t i = 0; i < blockCount; ++i) {
        if (blocks[i].address == block) {
            record(blocks[i].tag, blocks[i].size);
            blocks[i] = blocks[--blockCount];
            return;
        }
    }
}

void UnloadRecorder::lockReleased() {
    record(lockEvent, 0);
}

void UnloadTrace::tag(const char* tag) {
    currentTag = tag;
}

void UnloadTrace::start() {
    eventCount = 0;
    recording = true;
}

std::vector<std::string> UnloadTrace::stop() {
    recording = false;
    std::vector<std::string> result;
    for (std::size_t i = 0; i < eventCount; ++i) {
        std::string text = events[i].what;
        if (events[i].what != lockEvent) {
            text += " " + std::to_string(events[i].size);
        }
        result.push_back(text);
    }
    return result;
}

std::size_t UnloadTrace::alive(const char* tag) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < blockCount; ++i) {
        count += blocks[i].tag == tag ? 1U : 0U;
    }
    return count;
}

std::map<const void*, std::string> UnloadTrace::contents(const char* tag) {
    const char* const interrupted = currentTag.exchange(nullptr); // for blocks of the result
    std::map<const void*, std::string> result;
    for (std::size_t i = 0; i < blockCount; ++i) {
        if (blocks[i].tag == tag) {
            result.emplace(
                blocks[i].address,
                std::string(static_cast<const char*>(blocks[i].address), blocks[i].size));
        }
    }
    currentTag = interrupted;
    return result;
}

void UnloadTrace::freeBlocks(const char* tag) {
    for (std::size_t i = blockCount; i-- > 0;) {
        if (blocks[i].tag == tag) {
            void* const block = blocks[i].address;
            blocks[i] = blocks[--blockCount];
            ::operator delete(block);
        }
    }
}

void UnloadTrace::forget() {
    blockCount = 0;
}

} // namespace support
