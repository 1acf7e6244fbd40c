#pragma once

#include "../ScopedSignalBlock.h"

namespace ZOL::Backends {

/// Which signals a write to a descriptor can raise at the moment.
WriteSignals signalsOf(int descriptor) noexcept;

} // namespace ZOL::Backends
