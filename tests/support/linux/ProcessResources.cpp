#include "ProcessResources.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include <malloc.h>
#include <unistd.h>

#include "OpenHandles.h"

namespace support {

namespace {

std::size_t bytesOnTheHeap() {
    const struct mallinfo2 heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
}

std::size_t regionsInUse() {
    std::ifstream maps("/proc/self/maps");
    return static_cast<std::size_t>(std::count(std::istreambuf_iterator<char>(maps), {}, '\n'));
}

std::size_t bytesResident() {
    std::size_t all = 0;
    std::size_t resident = 0;
    std::ifstream("/proc/self/statm") >> all >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

} // namespace

#if defined(ZOL_TEST_SANITIZED)
const bool ProcessResources::memoryIsOurs = false;
#else
const bool ProcessResources::memoryIsOurs = true;
#endif

ProcessResources ProcessResources::now() {
    return {bytesOnTheHeap(), support::openHandles(), regionsInUse(), bytesResident()};
}

} // namespace support
