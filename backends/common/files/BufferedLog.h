#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "Diagnostics.h"
#include "Worker.h"
#include "files/FlushSettings.h"
#include "files/RotatingLog.h"

namespace ZOL::Backends {

/// A RotatingLog with a worker, which writes its lines after an interval and compresses its rotated
/// files. Without a need for it there is no worker, no lock and no buffer.
///
/// Until the worker runs, and after finish(), each line is written at once. After fork the child
/// gets a worker of its own with its first line.
///
/// Calls of the public functions are serialised by the caller, except finish and run.
class BufferedLog final : public WorkerTask, public std::enable_shared_from_this<BufferedLog> {
public:
    using Clock = RotatingLog::Clock;

    /// Opens nothing before the first line.
    /// @param backend what reports on standard error begin with.
    BufferedLog(std::string backend, const RotatingLogSettings& settings);

    /// Whether settings need a worker.
    static bool needsWorker(const RotatingLogSettings& settings) noexcept;

    /// Writes a line, which has its line end, or keeps it until it is due. Throws LogFileError if
    /// it does neither.
    /// @param level of the line.
    void write(std::string_view line, long long level, Clock::time_point now);

    /// The process ends: writes the lines that are kept, and lets the worker rest. Any thread may
    /// call it, at the same time as other functions and several times. On Windows, when the other
    /// threads are gone, it only writes to the file that is open.
    void finish() noexcept;

    /// Writes the lines that are kept, closes the file and ends the worker. What could not be
    /// written is lost.
    void close() noexcept;

    /// Tells of kept lines that are lost, and forgets them: finish() or close() could not write
    /// them, or the system took a part of them only.
    void countLostLines(DropCounter& drops) noexcept;

    /// See RotatingLog.
    bool mayExceedProcessLimit() const noexcept { return log_.mayExceedProcessLimit(); }

    /// What the worker does.
    std::optional<std::chrono::milliseconds> run() noexcept override;

private:
    class Lock;
    using SteadyClock = std::chrono::steady_clock;

    void startWorker(Clock::time_point now);
    void becomeChildProcess();
    void writeAll() noexcept;
    void letWorkerRest() noexcept;
    bool hasKeptLines() const noexcept { return !log_.keptLines().empty(); }
    bool isCompressionDue() const noexcept;
    void flush(Clock::time_point now) noexcept;
    void writeLast() noexcept;
    void keepFailure(const std::exception& error) noexcept;
    void flushIfDue() noexcept;
    void compressIfDue() noexcept;
    void compress();

    const std::string backend_;
    const RotatingLogSettings settings_;
    RotatingLog log_;
    std::atomic<std::size_t> lostLines_ = 0;
    std::string flushFailure_; ///< why kept lines could not be written last

    // Only with a worker:
    const bool needsWorker_;
    unsigned forkCount_;
    std::unique_ptr<std::mutex> mutex_; ///< protects log_ and what follows
    std::unique_ptr<Worker> worker_;
    Clock::time_point lastStart_;      ///< of a worker
    unsigned compressedRotations_ = 0; ///< as of RotatingLog::rotations, plus one
    bool isCompressionAsked_ = false;  ///< the worker has been woken for it
    bool isWorkerAwake_ = false;       ///< it will look at the log without being woken
    std::atomic<bool> isFinished_ = false;

    // The worker's own:
    std::unique_ptr<std::mutex> compressing_; ///< held while it works on a block of a file
    std::atomic<bool> isResting_ = false;     ///< it does so no more
    bool isFlushPlanned_ = false;
    SteadyClock::time_point nextFlush_; ///< if one is planned
    bool isCompressionRefused_ = false;
};

} // namespace ZOL::Backends
