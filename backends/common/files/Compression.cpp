#include "files/Compression.h"

#include <system_error>
#include <vector>

#include "files/GzipFile.h"
#include "files/LogFile.h"
#include "files/Rename.h"
#include "files/RotatedName.h"

namespace ZOL::Backends {

namespace fs = std::filesystem;

namespace {

constexpr const char* temporaryExtension = ".tmp";

fs::path compressedPath(fs::path file) {
    return file += RotatedName::compressedExtension;
}

fs::path temporaryPath(const fs::path& file) {
    return compressedPath(file) += temporaryExtension;
}

bool isRegular(const fs::path& file) {
    std::error_code error;
    return fs::symlink_status(file, error).type() == fs::file_type::regular;
}

[[noreturn]] void throwError(const char* action, const fs::path& path,
                             const std::error_code& error) {
    throw LogFileError("cannot " + std::string(action) + " " + path.u8string() + ": " +
                       error.message());
}

/// Whether the file is the temporary one of a rotated file.
bool isTemporary(const fs::path& file, const fs::path& live) {
    if (file.extension() != temporaryExtension) {
        return false;
    }
    const auto name = RotatedName::parse(file.stem(), live);
    return name && name->isCompressed;
}

/// Whether the file is a rotated one that a complete compressed one holds as well.
bool isReplaced(const fs::path& file, const fs::path& live) {
    const auto name = RotatedName::parse(file.filename(), live);
    if (!name || name->isCompressed || !isRegular(compressedPath(file))) {
        return false;
    }
    std::error_code error;
    const std::uint64_t size = fs::file_size(file, error);
    return !error && isGzipOf(compressedPath(file), size);
}

} // namespace

bool isCompressed(const fs::path& file) noexcept {
    try {
        std::error_code error;
        return fs::exists(fs::symlink_status(compressedPath(file), error));
    } catch (const std::exception&) {
        return true; // there is no memory: better another name than a file that is overwritten
    }
}

bool compressBeside(const fs::path& file, const std::function<bool()>& isCancelled) {
    if (!canBeRemoved(file)) {
        return false;
    }
    const fs::path temporary = temporaryPath(file);
    if (isRegular(temporary)) {
        std::error_code ignored; // it cannot be created then
        fs::remove(temporary, ignored);
    }
    return gzipFile(file, temporary, isCancelled);
}

void replaceByCompressed(const fs::path& file) {
    const fs::path temporary = temporaryPath(file);
    std::error_code error;
    if (!isRegular(file) || !canBeRemoved(file)) {
        fs::remove(temporary, error);
        return;
    }
    fs::rename(temporary, compressedPath(file), error);
    if (error) {
        std::error_code ignored;
        fs::remove(temporary, ignored);
        throwError("rename", temporary, error);
    }
    fs::remove(file, error);
    if (error) {
        throwError("remove", file, error);
    }
}

void removeIncompleteCompression(const fs::path& live) noexcept {
    try {
        std::vector<fs::path> unneeded;
        const fs::path folder = live.has_parent_path() ? live.parent_path() : fs::path(".");
        for (const auto& entry : fs::directory_iterator(folder)) {
            const fs::path& file = entry.path();
            if (isRegular(file) && (isTemporary(file, live) || isReplaced(file, live))) {
                unneeded.push_back(file);
            }
        }
        for (const fs::path& file : unneeded) {
            std::error_code ignored;
            fs::remove(file, ignored);
        }
    } catch (const std::exception&) {
        // The folder cannot be read, or there is no memory. The next start tries again.
    }
}

} // namespace ZOL::Backends
