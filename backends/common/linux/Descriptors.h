#pragma once

namespace ZOL::Backends {

/// Moves a newly opened descriptor above those of the standard streams. If the process has closed
/// a standard stream, the system gives its number to the next file or socket, and all that the
/// process prints would arrive there.
///
/// Returns the descriptor to use, which is closed on exec if it was moved. Returns -1 with errno
/// set if the descriptor is -1 or cannot be moved; it is closed then.
int aboveStandardStreams(int descriptor) noexcept;

} // namespace ZOL::Backends
