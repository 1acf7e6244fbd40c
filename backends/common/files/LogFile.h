#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace ZOL::Backends {

/// Thrown with a text that names the file, what it refused and why.
class LogFileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A regular file that is open for appending lines. Nobody else is kept from reading, renaming or
/// deleting it, and nothing truncates it. It is closed on exec and lies above the descriptors of
/// the standard streams.
///
/// Calls are serialised by the caller.
class LogFile {
public:
    /// Tells files apart, whatever their names are.
    struct Identity {
        bool operator==(const Identity& other) const noexcept {
            return device == other.device && file == other.file;
        }

        std::uint64_t device = 0;
        std::uint64_t file = 0;
    };

    /// Opens the file, or creates it; its folder must exist. Anything but a regular file is
    /// refused, on Linux a symbolic link too. A file that ends within a line gets a line end before
    /// the next line.
    /// @param mode the permissions of a created file on Linux, exactly; without it, 0640 less the
    /// umask.
    explicit LogFile(std::filesystem::path path, std::optional<unsigned> mode = {});
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;
    ~LogFile();

    /// Appends whole lines, with their line ends, in one system call if the system takes them
    /// whole, and removes from the text what it has taken, also if this throws. After a line of
    /// which it took only a part, the next call ends the torn line first. Blocks until the system
    /// has taken them.
    void appendFrom(std::string_view& lines);

    /// Appends one line, as appendFrom does.
    void append(std::string_view line) { appendFrom(line); }

    /// Ends a torn line, as appendFrom does first.
    void endTornLine();

    /// The size as of the opening or the last refresh, and what has been appended since.
    std::uint64_t size() const { return size_; }

    /// The size at the moment, which includes what a killed thread has appended. As size() if it
    /// cannot be read.
    std::uint64_t currentSize() const noexcept;

    /// Reads the size anew: somebody else may have truncated the file. If the file was truncated
    /// within a line, it gets a line end before the next one.
    void refreshSize() noexcept;

    /// Whether the path still leads to this file, which also is still open. False as well if the
    /// host has closed the descriptor, perhaps to use its number for something else.
    bool isAtItsPath() const noexcept;

    /// Whether isAtItsPath does not notice a deletion while the file is open. So it is under Wine.
    static bool isDeletionHidden() noexcept;

    /// When the file was written last.
    std::chrono::system_clock::time_point lastWrite() const noexcept;

    const std::filesystem::path& path() const { return path_; }
    const Identity& identity() const { return identity_; }

private:
    /// Whether the handle is that of this file.
    bool isOpen() const noexcept;

    /// Writes all, or throws. Removes what has been written.
    void write(std::string_view& bytes);

    std::filesystem::path path_;
    std::intptr_t handle_ = -1;
    Identity identity_;
    std::uint64_t size_ = 0;
    bool isTorn_ = false; ///< the file ends within a line
};

} // namespace ZOL::Backends
