#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>

namespace ZOL::Backends {

/// Lets one process write to a log file: a lock on the file <path>.lock beside it, because viewers
/// must be able to read the log itself. The system releases it when the process ends, however it
/// ends. On Windows the file is deleted then; on Linux it stays.
///
/// A child process after fork does not hold its parent's locks.
class FileLock {
public:
    /// Takes the lock of a log file. Null if another process or another part of this one holds it.
    /// Throws LogFileError if there can be no lock file.
    static std::unique_ptr<FileLock> tryLock(const std::filesystem::path& log);

    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    ~FileLock();

    /// Whether this process holds the lock: false in a child process of the one that took it.
    bool isHeld() const noexcept;

private:
    explicit FileLock(std::intptr_t handle) noexcept;

    std::intptr_t handle_;
    [[maybe_unused]] std::size_t slot_ = 0; ///< on Linux, where a child process finds what to close
};

} // namespace ZOL::Backends
