#include "live/ThisProcess.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>
#include <sstream>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

namespace backendcheck {

namespace {

struct Area {
    std::uintptr_t begin = 0;
    std::uintptr_t end = 0;
    std::string rights;
};

/// The one that the address is in; without rights if there is none.
Area areaOf(const void* address) {
    const auto sought = reinterpret_cast<std::uintptr_t>(address);
    std::ifstream map("/proc/self/maps");
    for (std::string line; std::getline(map, line);) {
        std::istringstream fields(line);
        Area area;
        char dash = 0;
        fields >> std::hex >> area.begin >> dash >> area.end >> area.rights;
        if (sought >= area.begin && sought < area.end) {
            return area;
        }
    }
    return {};
}

std::size_t entriesOf(const char* folder) {
    std::error_code error;
    const std::filesystem::directory_iterator entries(folder, error);
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

} // namespace

bool isReadable(const void* begin, std::size_t size) {
    const auto* const bytes = static_cast<const char*>(begin);
    for (std::size_t seen = 0; seen < size;) {
        const Area area = areaOf(bytes + seen);
        if (area.rights.empty() || area.rights.front() != 'r') {
            return false;
        }
        seen += area.end - reinterpret_cast<std::uintptr_t>(bytes + seen);
    }
    return true;
}

bool isCode(const void* address) {
    constexpr std::size_t executable = 2;
    const Area area = areaOf(address);
    return area.rights.size() > executable && area.rights[executable] == 'x';
}

bool isOnThisStack(const void* address) {
    const int here = 0;
    const Area stack = areaOf(&here);
    const auto sought = reinterpret_cast<std::uintptr_t>(address);
    return sought >= stack.begin && sought < stack.end;
}

std::size_t pageSize() {
    return static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

char* newPages(std::size_t size) {
    void* const pages =
        mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED) {
        throw std::bad_alloc();
    }
    return static_cast<char*>(pages);
}

void makeReadOnly(char* pages, std::size_t size) {
    mprotect(pages, size, PROT_READ);
}

void makeUnreadable(char* pages, std::size_t size) {
    madvise(pages, size, MADV_DONTNEED);
    mprotect(pages, size, PROT_NONE);
}

std::size_t usedMemory() {
    std::ifstream statistics("/proc/self/statm");
    std::size_t size = 0;
    std::size_t resident = 0;
    statistics >> size >> resident;
    return resident * pageSize();
}

std::size_t openHandles() {
    return entriesOf("/proc/self/fd");
}

std::size_t runningThreads() {
    return entriesOf("/proc/self/task");
}

} // namespace backendcheck
