#include "CrisisLogSandbox.h"

#include <optional>

#include "FreshProcess.h"

namespace support {

void withCrisisLog(const std::function<void()>& body) {
    // The process that starts the other one has the place: it is there before and after.
    std::optional<CrisisLogSandbox> place;
    if (!isFreshProcess()) {
        place.emplace();
    }
    inFreshProcess(body);
}

} // namespace support
