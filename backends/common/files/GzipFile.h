#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>

namespace ZOL::Backends {

/// Compresses a regular file into a new one in the gzip format, which names the source and the time
/// when that was written last. The new file has that time too, on Linux also the permissions of the
/// source. On Linux the source is never reached through a symbolic link.
///
/// Throws LogFileError or std::bad_alloc, and leaves no new file, if that fails: also if there is a
/// file of that name, which is kept. On Linux, a caller blocks the signal of a file that exceeds
/// the size limit of the process.
/// @param isCancelled is asked before each block of 64 KiB, and may be empty.
/// @return whether the new file is complete. If not, it was cancelled, and there is none.
[[nodiscard]] bool gzipFile(const std::filesystem::path& source,
                            const std::filesystem::path& target,
                            const std::function<bool()>& isCancelled);

/// Whether a file begins like one of gzipFile, and ends like one whose source had that size. Tells
/// a complete file from a truncated one, and does not decompress it. False if it cannot be read.
bool isGzipOf(const std::filesystem::path& file, std::uint64_t size);

} // namespace ZOL::Backends
