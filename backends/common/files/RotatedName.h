#pragma once

#include <ctime>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace ZOL::Backends {

/// The name of a rotated log file: zol.20260131T090507Z.000.log, the time of its rotation in UTC
/// and a counter within the second. A file that holds a day has it in front:
/// zol_2026-01-31.20260201T000000Z.000.log.
///
/// A compressed file has .gz behind: zol.20260131T090507Z.000.log.gz.
///
/// Earlier versions named files zol.3.log, up to zol.1000.log, the highest being the oldest one,
/// and zol_2026-01-31.log. These are read, but not made.
struct RotatedName {
    static constexpr unsigned maxCounter = 999;
    static constexpr const char* compressedExtension = ".gz";

    std::time_t time = 0; ///< of the rotation; of an earlier version's file, when its day began
    unsigned counter = 0; ///< from 0 to maxCounter
    std::string day;      ///< "2026-01-31", or empty

    /// Only in the name of an earlier version: 3 of zol.3.log, else 0.
    unsigned long number = 0;

    bool isCompressed = false; ///< whether .gz is at the end

    /// The path of the file, in the folder of the live one.
    std::filesystem::path pathOf(const std::filesystem::path& live) const;

    /// Reads the name of a file that has been rotated from the live one. Nothing if it is another
    /// file: a name counts only if it matches to its end, and if its day and time exist.
    static std::optional<RotatedName> parse(const std::filesystem::path& name,
                                            const std::filesystem::path& live);

    /// Whether this file is older: by number, the highest first, then by time, counter and
    /// day. Numbered files are older than all others.
    bool isOlderThan(const RotatedName& other) const noexcept;
};

} // namespace ZOL::Backends
