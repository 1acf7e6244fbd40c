#include "CrisisLogSandbox.h"

#include <optional>

#include "FreshProcess.h"

namespace support {

void withCrisisLog(const std::function<void()>& body) {
    // The parent process has the sandbox: it exists before and after the child.
    std::optional<CrisisLogSandbox> place;
    if (!isFreshProcess()) {
        place.emplace();
    }
    inFreshProcess(body);
}

} // namespace support
