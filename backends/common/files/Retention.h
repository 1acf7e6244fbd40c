#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <vector>

#include "files/RotatedName.h"

namespace ZOL::Backends {

/// How many rotated files are kept. Each limit holds alone; 0 is no limit.
struct RetentionLimits {
    std::size_t count = 0;   ///< rotated files
    unsigned days = 0;       ///< of 24 hours, since the rotation
    std::uint64_t bytes = 0; ///< of all files together, the live one included

    bool isAny() const noexcept { return count != 0 || days != 0 || bytes != 0; }
};

/// A rotated file in the folder of the live one.
struct RotatedFile {
    RotatedName name;
    std::filesystem::path path;
    std::time_t time = 0; ///< of the rotation; of a numbered file, of the last write
    std::uint64_t size = 0;
};

/// The rotated files of a live one, the oldest first. Other files, folders and symbolic links are
/// not among them. A folder that cannot be read has none.
std::vector<RotatedFile> rotatedFiles(const std::filesystem::path& live);

/// Those of the files that exceed a limit, the oldest first. The last rotated one is never among
/// them.
/// @param files the oldest first.
/// @param lastRotated if empty, the newest by its name.
/// @param liveBytes what the live file may need.
std::vector<RotatedFile> expiredFiles(const std::vector<RotatedFile>& files,
                                      const std::filesystem::path& lastRotated,
                                      std::uint64_t liveBytes, std::time_t now,
                                      const RetentionLimits& limits);

} // namespace ZOL::Backends
