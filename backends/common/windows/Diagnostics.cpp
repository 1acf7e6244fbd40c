#include "Diagnostics.h"

namespace ZOL::Backends {

// No write raises a signal on Windows.

ScopedSignalBlock::ScopedSignalBlock() noexcept {
    static_cast<void>(blockedPipe_);
    static_cast<void>(blockedFileSize_);
}

ScopedSignalBlock::~ScopedSignalBlock() = default;

} // namespace ZOL::Backends
