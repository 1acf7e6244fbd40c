#include "ScopedSignalBlock.h"

namespace ZOL::Backends {

bool isFileSizeLimited() noexcept {
    return false;
}

ScopedSignalBlock::ScopedSignalBlock(WriteSignals signals) noexcept {
    static_cast<void>(signals);
    static_cast<void>(raised_);
    static_cast<void>(unblock_);
}

ScopedSignalBlock::~ScopedSignalBlock() = default;

} // namespace ZOL::Backends
