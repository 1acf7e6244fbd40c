#include <filesystem>
#include <iterator>

#include "OpenHandles.h"

namespace support {

std::size_t openHandles() {
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(descriptors), end(descriptors)));
}

void warmUpExceptions() {}

} // namespace support
