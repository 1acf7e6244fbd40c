#pragma once

namespace benchmarks {

/// The FarSide of the discarding back end is an object of the process of this name.
inline constexpr char discardedName[] = "benchmarks: discarded";

} // namespace benchmarks
