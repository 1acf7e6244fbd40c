#pragma once

#include <filesystem>
#include <system_error>

namespace ZOL::Backends {

/// Renames a file within its folder, and never replaces another one: std::errc::file_exists if
/// there is one of the new name.
std::error_code renameWithoutReplacing(const std::filesystem::path& from,
                                       const std::filesystem::path& to) noexcept;

/// Whether nobody keeps a file from being removed at the moment: on Windows, who has it open
/// without sharing deletion does.
bool canBeRemoved(const std::filesystem::path& path) noexcept;

} // namespace ZOL::Backends
