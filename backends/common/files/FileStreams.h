#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <filesystem>

namespace ZOL::Backends {

/// A regular file that is open for reading. Nobody else is kept from writing, renaming or deleting
/// it. It is closed on exec and lies above the descriptors of the standard streams.
class InputFile {
public:
    /// Throws LogFileError for anything but a regular file, on Linux for a symbolic link too.
    explicit InputFile(std::filesystem::path path);
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile();

    /// Reads up to that many bytes from an offset on; 0 only at the end. Throws LogFileError.
    std::size_t readAt(std::uint64_t offset, unsigned char* bytes, std::size_t size) const;

    /// Throws LogFileError.
    std::uint64_t size() const;

    /// When it was written last, in seconds. Throws LogFileError.
    std::time_t lastWrite() const;

private:
    friend class OutputFile;

    std::filesystem::path path_;
    std::intptr_t handle_ = -1;
};

/// A new file, which is removed again unless it is completed. It is closed on exec and lies above
/// the descriptors of the standard streams.
class OutputFile {
public:
    /// Creates the file, on Linux with exactly the permissions of the source. Throws LogFileError,
    /// also if there is something of that name.
    /// @param source must live as long as this.
    OutputFile(std::filesystem::path path, const InputFile& source);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile();

    /// Writes all, or throws LogFileError.
    void write(const unsigned char* bytes, std::size_t size);

    /// Gives the file the source's time of the last write, waits until all is on the disk and
    /// closes the file, which stays. Throws LogFileError if that fails.
    void complete();

private:
    std::filesystem::path path_;
    const InputFile& source_;
    std::intptr_t handle_ = -1;
    bool isComplete_ = false;
};

} // namespace ZOL::Backends
