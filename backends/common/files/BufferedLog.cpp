#include "files/BufferedLog.h"

#include <algorithm>
#include <thread>
#include <utility>

#include "Diagnostics.h"
#include "Process.h"
#include "Thread.h"
#include "files/Compression.h"

namespace ZOL::Backends {

namespace {

using namespace std::chrono_literals;

/// From one attempt to start a worker to the next.
constexpr BufferedLog::Clock::duration retryInterval = 1s;
/// Longer than a block takes to be compressed, except on a disk that hardly answers.
constexpr std::chrono::milliseconds maxBlockTime = 100ms;

std::size_t countLines(std::string_view text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

} // namespace

/// Holds the mutex, except when the only thread that is left finds it in the hands of one that has
/// been killed.
class BufferedLog::Lock {
public:
    explicit Lock(BufferedLog& log) : lock_(*log.mutex_, std::try_to_lock) {
        if (lock_.owns_lock()) {
            return;
        }
        if (areOtherThreadsGone()) {
            log.log_.recover();
        } else {
            lock_.lock();
        }
    }

private:
    std::unique_lock<std::mutex> lock_;
};

BufferedLog::BufferedLog(std::string backend, const RotatingLogSettings& settings)
    : backend_(std::move(backend)),
      settings_(settings),
      log_(backend_, settings),
      needsWorker_(needsWorker(settings)),
      forkCount_(needsWorker_ ? forkCount() : 0),
      mutex_(needsWorker_ ? std::make_unique<std::mutex>() : nullptr),
      compressing_(needsWorker_ ? std::make_unique<std::mutex>() : nullptr) {}

bool BufferedLog::needsWorker(const RotatingLogSettings& settings) noexcept {
    return settings.flush.interval.has_value() || settings.isCompressed;
}

void BufferedLog::write(std::string_view line, long long level, Clock::time_point now) {
    if (!needsWorker_) {
        log_.write(line, now);
        return;
    }
    startWorker(now);
    bool wakes = false;
    {
        const Lock lock(*this);
        if (areOtherThreadsGone()) {
            log_.writeLast(line);
            return;
        }
        const bool hasWorker = !isFinished_ && worker_ != nullptr && worker_->isRunning();
        const bool isKept =
            hasWorker && settings_.flush.interval && level < settings_.flush.minLevel;
        log_.write(line, now,
                   isKept ? RotatingLog::Delivery::later : RotatingLog::Delivery::atOnce);
        lostLines_ += log_.takeTornLines();
        const bool asksForCompression = isCompressionDue() && !isCompressionAsked_;
        wakes = hasWorker && (asksForCompression || (hasKeptLines() && !isWorkerAwake_));
        if (wakes) {
            isWorkerAwake_ = true;
            isCompressionAsked_ = isCompressionDue();
        }
    }
    if (wakes) {
        worker_->wake();
    }
}

void BufferedLog::startWorker(Clock::time_point now) {
    if (forkCount() != forkCount_) {
        becomeChildProcess();
    }
    const bool isRetryDue = now < lastStart_ || now - lastStart_ >= retryInterval;
    if (worker_ == nullptr && !isFinished_ && isRetryDue) {
        lastStart_ = now;
        worker_ = Worker::create("zol-" + backend_, shared_from_this());
    }
}

/// The threads of the parent do not exist here, and one of them may have held the mutex.
void BufferedLog::becomeChildProcess() {
    auto mutex = std::make_unique<std::mutex>();
    auto compressing = std::make_unique<std::mutex>();
    static_cast<void>(mutex_.release());
    static_cast<void>(compressing_.release());
    static_cast<void>(worker_.release());
    mutex_ = std::move(mutex);
    compressing_ = std::move(compressing);
    log_.forgetKeptLines();
    lostLines_ = 0;
    lastStart_ = {};
    isWorkerAwake_ = false;
    isCompressionAsked_ = false;
    forkCount_ = forkCount();
}

void BufferedLog::finish() noexcept {
    if (needsWorker_) {
        writeAll();
        letWorkerRest();
    }
}

/// Under Wine, a thread that is killed while it works on files may take locks of the system with
/// it, for which the end of the process then waits.
void BufferedLog::letWorkerRest() noexcept {
    isResting_ = true;
    if (!settings_.isCompressed || areOtherThreadsGone()) {
        return;
    }
    const auto end = SteadyClock::now() + maxBlockTime;
    while (!std::unique_lock<std::mutex>(*compressing_, std::try_to_lock).owns_lock() &&
           SteadyClock::now() < end) {
        std::this_thread::sleep_for(1ms);
    }
}

void BufferedLog::writeAll() noexcept {
    try {
        if (forkCount() != forkCount_) {
            becomeChildProcess();
        }
        const Lock lock(*this);
        isFinished_ = true;
        if (areOtherThreadsGone()) {
            writeLast();
        } else {
            flush(Clock::now());
        }
        lostLines_ += countLines(log_.keptLines());
        log_.forgetKeptLines();
    } catch (...) {
        return; // there is no memory, in a child process that has logged nothing
    }
}

void BufferedLog::close() noexcept {
    if (needsWorker_) {
        writeAll();
        const Lock lock(*this);
        log_.close();
    }
    worker_.reset(); // which owns this object
}

void BufferedLog::countLostLines(DropCounter& drops) noexcept {
    if (lostLines_ == 0) {
        return;
    }
    const Lock lock(*this);
    for (std::size_t count = lostLines_.exchange(0); count != 0; --count) {
        drops.add(flushFailure_);
    }
}

void BufferedLog::flush(Clock::time_point now) noexcept {
    try {
        log_.flush(now);
    } catch (const std::exception& error) {
        keepFailure(error); // and the lines
    }
    lostLines_ += log_.takeTornLines();
}

void BufferedLog::writeLast() noexcept {
    try {
        log_.writeLast({});
    } catch (const std::exception& error) {
        keepFailure(error);
    }
    lostLines_ += log_.takeTornLines();
}

void BufferedLog::keepFailure(const std::exception& error) noexcept {
    try {
        flushFailure_ = error.what();
    } catch (const std::bad_alloc&) {
        flushFailure_.clear();
    }
}

bool BufferedLog::isCompressionDue() const noexcept {
    return settings_.isCompressed && log_.hasBeenOpen() &&
           compressedRotations_ != log_.rotations() + 1;
}

std::optional<std::chrono::milliseconds> BufferedLog::run() noexcept {
    compressIfDue();
    if (isFinished_) {
        return std::nullopt;
    }
    const Lock lock(*this);
    const bool hadKeptLines = hasKeptLines();
    flushIfDue();
    // After a flush it stays awake for another interval, so that no statement has to wake it while
    // there is traffic.
    isFlushPlanned_ = isFlushPlanned_ && hadKeptLines;
    isWorkerAwake_ = isFlushPlanned_ || isCompressionDue();
    if (isCompressionDue()) {
        return 0ms;
    }
    if (!isFlushPlanned_) {
        return std::nullopt;
    }
    const auto wait = std::chrono::ceil<std::chrono::milliseconds>(nextFlush_ - SteadyClock::now());
    return std::max(wait, 0ms);
}

/// Under the mutex.
void BufferedLog::flushIfDue() noexcept {
    const bool isNewlyPlanned = !isFlushPlanned_ && hasKeptLines();
    if (isFinished_ || (!isFlushPlanned_ && !isNewlyPlanned)) {
        return;
    }
    const auto now = SteadyClock::now();
    isFlushPlanned_ = true;
    if (!isNewlyPlanned) {
        if (now < nextFlush_) {
            return;
        }
        flush(Clock::now());
    }
    nextFlush_ = now + *settings_.flush.interval;
}

void BufferedLog::compressIfDue() noexcept {
    if (!settings_.isCompressed || isFinished_) {
        return;
    }
    {
        const Lock lock(*this);
        if (!isCompressionDue()) {
            return;
        }
        compressedRotations_ = log_.rotations() + 1;
        isCompressionAsked_ = false;
        if (!log_.ownsFiles()) {
            return; // the parent of this process does it
        }
    }
    try {
        compress();
        isCompressionRefused_ = false;
    } catch (const std::bad_alloc&) {
        // The next rotation tries again.
    } catch (const std::exception& error) {
        if (!std::exchange(isCompressionRefused_, true)) {
            reportToStderr(backend_, error.what());
        }
    }
}

/// Compresses the rotated files that are not, the oldest first.
void BufferedLog::compress() {
    std::unique_lock<std::mutex> busy(*compressing_);
    const auto isCancelled = [this, &busy] {
        busy.unlock();
        if (isResting_) {
            WakeSignal().wait({}); // for ever
        }
        if (!isFinished_) {
            const Lock lock(*this);
            flushIfDue();
        }
        busy.lock();
        return isFinished_.load();
    };
    for (const RotatedFile& file : rotatedFiles(settings_.path)) {
        if (file.name.isCompressed || isCancelled()) {
            continue;
        }
        if (compressBeside(file.path, isCancelled)) {
            const Lock lock(*this); // a rotation removes files
            if (!isFinished_ && log_.ownsFiles()) {
                replaceByCompressed(file.path);
            }
        }
    }
}

} // namespace ZOL::Backends
