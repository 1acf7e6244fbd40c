#include "files/Retention.h"

#include <algorithm>
#include <chrono>
#include <numeric>

namespace ZOL::Backends {

namespace fs = std::filesystem;

namespace {

constexpr long long secondsPerDay = 24LL * 60 * 60;

/// The difference of file times can be had everywhere, their epoch cannot.
std::time_t timeOfLastWrite(const fs::directory_entry& entry, std::error_code& error) {
    const auto age = fs::file_time_type::clock::now() - entry.last_write_time(error);
    return std::time(nullptr) - std::chrono::duration_cast<std::chrono::seconds>(age).count();
}

} // namespace

std::vector<RotatedFile> rotatedFiles(const fs::path& live) {
    std::vector<RotatedFile> files;
    const fs::path folder = live.has_parent_path() ? live.parent_path() : fs::path(".");
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::optional<RotatedName> name = RotatedName::parse(entry->path().filename(), live);
        std::error_code entryError;
        if (!name || entry->symlink_status(entryError).type() != fs::file_type::regular) {
            continue;
        }
        RotatedFile file;
        file.time = name->number == 0 ? name->time : timeOfLastWrite(*entry, entryError);
        file.size = entry->file_size(entryError);
        if (entryError) {
            continue; // removed by somebody else
        }
        file.name = *std::move(name);
        file.path = live.parent_path() / entry->path().filename();
        files.push_back(std::move(file));
    }
    std::sort(files.begin(), files.end(), [](const RotatedFile& left, const RotatedFile& right) {
        return left.name.isOlderThan(right.name);
    });
    return files;
}

std::vector<RotatedFile> expiredFiles(const std::vector<RotatedFile>& files,
                                      const fs::path& lastRotated, std::uint64_t liveBytes,
                                      std::time_t now, const RetentionLimits& limits) {
    std::vector<RotatedFile> expired;
    std::size_t count = files.size();
    std::uint64_t bytes =
        std::accumulate(files.begin(), files.end(), liveBytes,
                        [](std::uint64_t sum, const RotatedFile& file) { return sum + file.size; });
    const fs::path last = lastRotated.empty() && !files.empty() ? files.back().path.filename()
                                                                : lastRotated.filename();
    for (const RotatedFile& file : files) {
        const bool isOneTooMany = limits.count != 0 && count > limits.count;
        const bool isTooOld = limits.days != 0 && now - file.time > limits.days * secondsPerDay;
        const bool isTooMuch = limits.bytes != 0 && bytes > limits.bytes;
        if ((isOneTooMany || isTooOld || isTooMuch) && file.path.filename() != last) {
            expired.push_back(file);
            --count;
            bytes -= file.size;
        }
    }
    return expired;
}

} // namespace ZOL::Backends
