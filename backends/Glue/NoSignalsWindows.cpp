#include "NoSignals.h"

namespace ZOL::Backends {

// Nothing but failures comes of writing here.

NoSignals::NoSignals() noexcept {
    static_cast<void>(heldPipe_);
    static_cast<void>(heldSize_);
}

NoSignals::~NoSignals() = default;

} // namespace ZOL::Backends
