#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "files/FileLock.h"
#include "files/FlushSettings.h"
#include "files/LogFile.h"
#include "files/Retention.h"
#include "files/RotatedName.h"
#include "files/RotationClock.h"
#include "files/WriteBuffer.h"

namespace ZOL::Backends {

/// What a RotatingLog does when.
struct RotatingLogSettings {
    std::filesystem::path path;
    std::uint64_t maxBytes = 0;         ///< of the live file; 0 is no limit
    std::optional<RotationClock> clock; ///< without it, no time of day rotates
    bool hasDayInName = false;          ///< whether names of rotated files begin with their day
    RetentionLimits retention;
    std::optional<unsigned> mode; ///< see LogFile

    // What BufferedLog does with it:
    FlushSettings flush;
    bool isCompressed = false; ///< whether rotated files are compressed
};

/// A log file that is renamed when it is full or when its period ends, while a new one begins under
/// the same name. Nothing is truncated, no line is split between two files, and of the processes
/// that name the same file one writes to it.
///
/// If the file is moved or deleted, a line that is written at least a fifth of a second later makes
/// it anew. If a rename is refused, the file grows beyond its limit, and a line on standard error
/// says so once.
///
/// Lines may be kept in a buffer, from where flush() writes them. They count for the size.
///
/// After fork the child writes on to its parent's file, and renames it only when the parent has
/// ended.
///
/// Calls are serialised by the caller.
class RotatingLog {
public:
    using Clock = std::chrono::system_clock;

    /// Opens nothing before the first line.
    /// @param backend what reports on standard error begin with.
    RotatingLog(std::string backend, RotatingLogSettings settings);

    /// When the system gets a line.
    enum class Delivery {
        atOnce, ///< before write() returns, after those that are kept
        later,  ///< with flush(), or when the buffer is full
    };

    /// Appends a line, which has its line end. Throws LogFileError if the line is neither written
    /// nor kept; the next attempt to open the file is made a second later at the earliest.
    /// @param now the present time. It may be set back.
    void write(std::string_view line, Clock::time_point now, Delivery delivery = Delivery::atOnce);

    /// Writes the lines that are kept. Throws LogFileError if some are not written; these are kept
    /// on, except for one of which the system took a part.
    void flush(Clock::time_point now);

    /// Writes the lines that are kept, and then another one, to the file as it is: opens, renames
    /// and removes nothing. For the end of the process, see areOtherThreadsGone. Throws
    /// LogFileError if there is no open file, or if it takes no more.
    /// @param line may be empty.
    void writeLast(std::string_view line);

    /// A thread has been killed in one of the functions.
    void recover() noexcept;

    /// This is a child process: its parent writes the lines that are kept.
    void forgetKeptLines() noexcept;

    /// The lines that are kept.
    std::string_view keptLines() const noexcept { return buffer_.text(); }

    /// Closes the file and gives its lock back. Kept lines are lost.
    void close() noexcept;

    /// How many lines the system took a part of, since the last call.
    std::size_t takeTornLines() noexcept { return std::exchange(tornLines_, 0); }

    /// How often the file has been renamed.
    unsigned rotations() const noexcept { return rotations_; }

    bool hasBeenOpen() const noexcept { return hasBeenOpen_; }

    /// Whether files may be renamed and removed: not in a child of the process that writes them.
    bool ownsFiles() const noexcept { return lock_ == nullptr || lock_->isHeld(); }

    /// Whether a write may raise SIGXFSZ: whether this process had a limit for file sizes a fifth
    /// of a second ago.
    bool mayExceedProcessLimit() const noexcept { return isFileSizeLimited_; }

private:
    static bool isPast(Clock::time_point moment, Clock::duration wait, Clock::time_point now);
    void check(Clock::time_point now);
    void checkIfDue(Clock::time_point now);
    void append(std::string_view& lines, std::optional<Clock::time_point> now);
    void writeKeptLines(std::optional<Clock::time_point> now);
    bool hasWrittenKeptLines(Clock::time_point now) noexcept;
    std::uint64_t size() const noexcept;
    void open(Clock::time_point now);
    void takeLock();
    void startPeriod(Clock::time_point at);
    std::uint64_t finalSize() const noexcept;
    bool isFull() const noexcept;
    bool isPeriodOver(Clock::time_point now) const noexcept;
    void rotateIfDue(Clock::time_point now);
    void rotate(Clock::time_point now);
    void refuseRotation(const std::string& reason, Clock::time_point now);
    std::error_code rename(Clock::time_point now, std::filesystem::path& name);
    void removeExpired(const std::filesystem::path& lastRotated, Clock::time_point now) noexcept;

    std::string backend_;
    RotatingLogSettings settings_;
    std::unique_ptr<FileLock> lock_;
    std::unique_ptr<LogFile> file_;
    LogFile::Identity identity_; ///< of the file that was open last

    Clock::time_point lastCheck_;
    Clock::time_point lastFailure_; ///< to open the file
    Clock::time_point lastRefusal_; ///< to rename the file
    std::string failure_;           ///< why the file could not be opened; empty if it could
    Clock::time_point periodBegin_;
    Clock::time_point periodEnd_;
    RotatedName lastName_; ///< that this object has given
    bool isRotationRefused_ = false;
    bool isRetentionRefused_ = false;
    bool isLockRefused_ = false;
    bool hasBeenOpen_ = false;
    std::atomic<bool> isFileSizeLimited_ = true; ///< asked for without the lock of BufferedLog
    unsigned rotations_ = 0;

    WriteBuffer buffer_;
    std::size_t tornLines_ = 0;
    std::size_t lineBytes_ = 0; ///< of the line that is being written
    /// While the buffer is written: what recover() needs to know.
    std::atomic<bool> isWriting_ = false;
    std::size_t writtenFrom_ = 0;       ///< where the buffer began
    std::uint64_t sizeWhenFlushed_ = 0; ///< of the file
};

} // namespace ZOL::Backends
