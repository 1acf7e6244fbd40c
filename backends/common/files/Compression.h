#pragma once

#include <filesystem>
#include <functional>

namespace ZOL::Backends {

/// Whether a rotated file has been compressed: whether there is a file with .gz behind the name.
bool isCompressed(const std::filesystem::path& file) noexcept;

/// Compresses a rotated file into a temporary one beside it, zol.20260131T090507Z.000.log.gz.tmp,
/// and replaces one that an earlier process has left. Throws LogFileError, and leaves no temporary
/// file, if that fails.
/// @param isCancelled is asked every few milliseconds.
/// @return whether the temporary file is complete. Not so if it has been cancelled, or on Windows
/// if somebody who reads the file does not let it be removed: try again later.
bool compressBeside(const std::filesystem::path& file, const std::function<bool()>& isCancelled);

/// Gives the temporary file its name, and removes the file that it holds. If somebody has removed
/// that, removes the temporary one. Throws LogFileError if one of the files cannot be renamed or
/// removed; no line is lost then.
void replaceByCompressed(const std::filesystem::path& file);

/// Removes what a process that was killed has left of the compression of a log's rotated files:
/// temporary files, and those of which there is a complete compressed one. Ignores failures.
/// @param live the path of the log.
void removeIncompleteCompression(const std::filesystem::path& live) noexcept;

} // namespace ZOL::Backends
