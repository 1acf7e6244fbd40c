#include "live/ChildProcess.h"

#include <fstream>
#include <utility>

namespace backendcheck {

Watch::Watch(std::filesystem::path progress, std::chrono::milliseconds timeout)
    : progress_(std::move(progress)), timeout_(timeout), last_(std::chrono::steady_clock::now()) {}

bool Watch::isOver() {
    // Opened each time: Windows tells the size of a file that is being written to nobody else.
    std::ifstream file(progress_, std::ios_base::binary | std::ios_base::ate);
    const std::streamoff size = file.is_open() ? std::streamoff(file.tellg()) : 0;
    const auto now = std::chrono::steady_clock::now();
    if (size != size_) {
        size_ = size;
        last_ = now;
    }
    return now - last_ > timeout_;
}

} // namespace backendcheck
