#pragma once

#include <filesystem>

#include <sys/stat.h>

namespace ZOL::Backends {

/// What lies at a path, if it is not a regular file. Null for a regular file.
const char* otherKind(mode_t mode) noexcept;

// All of them throw LogFileError.

[[noreturn]] void throwOtherKind(const std::filesystem::path& path, const char* kind);

/// @param action for example "write to".
/// @param error of errno.
[[noreturn]] void throwFileError(const char* action, const std::filesystem::path& path, int error);

/// After open() has failed, also because a symbolic link or another kind of file is there.
[[noreturn]] void throwOpenError(const std::filesystem::path& path, int error);

} // namespace ZOL::Backends
