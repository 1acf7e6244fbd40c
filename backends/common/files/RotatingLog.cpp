#include "files/RotatingLog.h"

#include <algorithm>
#include <exception>

#include "Diagnostics.h"
#include "Process.h"
#include "ScopedSignalBlock.h"
#include "files/Compression.h"
#include "files/Rename.h"

namespace ZOL::Backends {

namespace {

using namespace std::chrono_literals;

/// From one look at the path to the next: how long lines may go to a file that has been moved.
constexpr RotatingLog::Clock::duration checkInterval = 200ms;
/// From one attempt to open or to rename to the next.
constexpr RotatingLog::Clock::duration retryInterval = 1s;
/// Of lines that wait for a flush. Filled by one busy thread within several milliseconds, so that
/// not one statement in a thousand has to wait for a write.
constexpr std::size_t maxKeptBytes = std::size_t{1024} * 1024;

} // namespace

RotatingLog::RotatingLog(std::string backend, RotatingLogSettings settings)
    : backend_(std::move(backend)), settings_(std::move(settings)), buffer_(maxKeptBytes) {}

void RotatingLog::write(std::string_view line, Clock::time_point now, Delivery delivery) {
    lineBytes_ = line.size();
    checkIfDue(now);
    rotateIfDue(now);
    if (delivery == Delivery::later && buffer_.add(line)) {
        return;
    }
    writeKeptLines(now);
    if (delivery == Delivery::later && buffer_.add(line)) {
        return;
    }
    append(line, now);
}

void RotatingLog::flush(Clock::time_point now) {
    if (!buffer_.text().empty()) {
        checkIfDue(now);
        writeKeptLines(now);
    }
}

void RotatingLog::writeLast(std::string_view line) {
    if (file_ == nullptr) {
        throw LogFileError("the process ends, and " + settings_.path.u8string() + " is not open");
    }
    writeKeptLines({});
    append(line, {});
}

void RotatingLog::recover() noexcept {
    if (isWriting_ && file_ != nullptr) {
        const std::uint64_t size = finalSize();
        if (size >= sizeWhenFlushed_) {
            buffer_.setBegin(writtenFrom_ + static_cast<std::size_t>(size - sizeWhenFlushed_));
        }
    }
    isWriting_ = false;
}

/// The size of the file when the killed thread has written what the system was writing for it.
std::uint64_t RotatingLog::finalSize() const noexcept {
    constexpr int maxWaits = 50;
    std::uint64_t size = file_->currentSize();
    for (int i = 0; i < maxWaits; ++i) {
        waitForKilledThreads();
        const std::uint64_t before = size;
        size = file_->currentSize();
        if (size == before) {
            break;
        }
    }
    return size;
}

void RotatingLog::forgetKeptLines() noexcept {
    isWriting_ = false;
    buffer_.clear();
}

void RotatingLog::close() noexcept {
    file_.reset();
    lock_.reset();
    buffer_.clear();
}

/// Writes the lines that are kept. Those that are not written stay.
/// @param now if empty, nothing is opened.
void RotatingLog::writeKeptLines(std::optional<Clock::time_point> now) {
    std::string_view rest = buffer_.text();
    if (rest.empty()) {
        return;
    }
    file_->endTornLine();
    writtenFrom_ = buffer_.begin();
    sizeWhenFlushed_ = file_->size();
    isWriting_ = true;
    std::exception_ptr failure;
    try {
        append(rest, now);
    } catch (...) {
        failure = std::current_exception();
    }
    const std::string_view text = buffer_.text();
    std::size_t taken = text.size() - rest.size();
    if (taken != 0 && text[taken - 1] != '\n') {
        taken = text.find('\n', taken) + 1; // the rest of that line is of no use any more
        ++tornLines_;
    }
    buffer_.setBegin(writtenFrom_ + taken);
    isWriting_ = false;
    if (failure != nullptr) {
        std::rethrow_exception(failure);
    }
}

/// Whether no line is kept any more.
bool RotatingLog::hasWrittenKeptLines(Clock::time_point now) noexcept {
    try {
        writeKeptLines(now);
        return true;
    } catch (...) {
        return false;
    }
}

/// Appends lines to the file and removes from the text what the system has taken.
/// @param now if empty, nothing is opened.
void RotatingLog::append(std::string_view& lines, std::optional<Clock::time_point> now) {
    try {
        file_->appendFrom(lines);
    } catch (const LogFileError&) {
        if (!now || file_->isAtItsPath()) {
            throw;
        }
        check(*now); // the host has closed the descriptor
        file_->appendFrom(lines);
    }
}

/// Whether a wait is over. A clock that was set back ends it as well.
bool RotatingLog::isPast(Clock::time_point moment, Clock::duration wait, Clock::time_point now) {
    return now < moment || now - moment >= wait;
}

void RotatingLog::checkIfDue(Clock::time_point now) {
    if (file_ == nullptr || isPast(lastCheck_, checkInterval, now)) {
        check(now);
    }
}

/// Opens the file if it is not open, or if the path no longer leads to it.
void RotatingLog::check(Clock::time_point now) {
    isFileSizeLimited_ = isFileSizeLimited();
    if (file_ != nullptr && !LogFile::isDeletionHidden() && file_->isAtItsPath()) {
        file_->refreshSize();
    } else {
        file_.reset();
        open(now);
    }
    lastCheck_ = now;
}

void RotatingLog::open(Clock::time_point now) {
    if (!failure_.empty() && !isPast(lastFailure_, retryInterval, now)) {
        throw LogFileError(failure_);
    }
    try {
        std::error_code ignored; // the file cannot be opened then, and says why
        std::filesystem::create_directories(settings_.path.parent_path(), ignored);
        auto file = std::make_unique<LogFile>(settings_.path, settings_.mode);
        takeLock();
        file_ = std::move(file);
    } catch (const LogFileError& error) {
        failure_ = error.what();
        lastFailure_ = now;
        throw;
    }
    failure_.clear();
    if (!(file_->identity() == identity_)) {
        identity_ = file_->identity();
        isRotationRefused_ = false;
        startPeriod(file_->size() == 0 ? now : file_->lastWrite());
    }
    if (!hasBeenOpen_) {
        hasBeenOpen_ = true;
        if (ownsFiles()) {
            removeIncompleteCompression(settings_.path);
        }
        removeExpired({}, now);
    }
}

void RotatingLog::takeLock() {
    if (lock_ != nullptr && lock_->isHeld()) {
        return;
    }
    std::unique_ptr<FileLock> lock;
    try {
        lock = FileLock::tryLock(settings_.path);
    } catch (const LogFileError& error) {
        // The log may be writable where nothing can be created.
        if (!std::exchange(isLockRefused_, true)) {
            reportToStderr(backend_, std::string(error.what()) +
                                         "; another process that writes to the log is not noticed");
        }
        return;
    }
    if (lock != nullptr) {
        lock_ = std::move(lock);
    } else if (lock_ == nullptr) {
        throw LogFileError("another process or back end writes to " + settings_.path.u8string() +
                           "; with {pid} in the path, each process has a file of its own");
    }
    // Else this is a child process, whose parent holds the lock.
}

void RotatingLog::startPeriod(Clock::time_point at) {
    if (settings_.clock) {
        const std::time_t time = Clock::to_time_t(at);
        periodBegin_ = Clock::from_time_t(settings_.clock->periodStart(time));
        periodEnd_ = Clock::from_time_t(settings_.clock->nextRotation(time));
    }
}

/// With the lines that are kept.
std::uint64_t RotatingLog::size() const noexcept {
    return file_->size() + buffer_.text().size();
}

bool RotatingLog::isFull() const noexcept {
    return settings_.maxBytes != 0 && size() != 0 && size() + lineBytes_ > settings_.maxBytes;
}

bool RotatingLog::isPeriodOver(Clock::time_point now) const noexcept {
    return settings_.clock && now >= periodEnd_;
}

void RotatingLog::rotateIfDue(Clock::time_point now) {
    if (settings_.clock && now < periodBegin_) {
        startPeriod(now); // the clock has been set back
    }
    if (isPeriodOver(now) && size() == 0) {
        startPeriod(now);
    }
    if ((isPeriodOver(now) || isFull()) &&
        (!isRotationRefused_ || isPast(lastRefusal_, retryInterval, now)) &&
        hasWrittenKeptLines(now)) {
        rotate(now);
    }
}

void RotatingLog::rotate(Clock::time_point now) {
    takeLock();
    if (!ownsFiles()) {
        isRotationRefused_ = true; // the parent of this process will rename the file
        lastRefusal_ = now;
        return;
    }
    if (!file_->isAtItsPath()) { // what is there is not to be renamed
        file_.reset();
        open(now);
        return;
    }
    std::filesystem::path name;
    if (const std::error_code error = rename(now, name)) {
        refuseRotation(error.message(), now);
        return;
    }
    try {
        file_ = std::make_unique<LogFile>(settings_.path, settings_.mode);
    } catch (const std::exception& error) {
        // Writes on to the old file, if it can have its name back.
        renameWithoutReplacing(name, settings_.path);
        refuseRotation(error.what(), now);
        return;
    }
    identity_ = file_->identity();
    isRotationRefused_ = false;
    ++rotations_;
    startPeriod(now);
    removeExpired(name, now);
}

/// Renames the file to a name of its own.
std::error_code RotatingLog::rename(Clock::time_point now, std::filesystem::path& name) {
    RotatedName rotated;
    rotated.time = Clock::to_time_t(now);
    if (settings_.hasDayInName) {
        rotated.day = localDay(Clock::to_time_t(periodBegin_));
    }
    rotated.counter = rotated.time == lastName_.time ? lastName_.counter + 1 : 0;
    for (; rotated.counter <= RotatedName::maxCounter; ++rotated.counter) {
        name = rotated.pathOf(settings_.path);
        const std::error_code error = isCompressed(name)
                                          ? std::make_error_code(std::errc::file_exists)
                                          : renameWithoutReplacing(settings_.path, name);
        if (error != std::errc::file_exists) {
            lastName_ = rotated;
            return error;
        }
    }
    return std::make_error_code(std::errc::file_exists);
}

void RotatingLog::refuseRotation(const std::string& reason, Clock::time_point now) {
    lastRefusal_ = now;
    if (!std::exchange(isRotationRefused_, true)) {
        reportToStderr(backend_, "cannot begin a new file for " + settings_.path.u8string() + ": " +
                                     reason + "; writing on to the old one");
    }
}

void RotatingLog::removeExpired(const std::filesystem::path& lastRotated,
                                Clock::time_point now) noexcept {
    const bool isChild = !ownsFiles(); // the parent of this process does it
    if (isChild || !settings_.retention.isAny()) {
        return;
    }
    try {
        const std::uint64_t liveBytes =
            settings_.maxBytes != 0 ? std::max<std::uint64_t>(settings_.maxBytes, lineBytes_)
                                    : size() + lineBytes_;
        for (const RotatedFile& file :
             expiredFiles(rotatedFiles(settings_.path), lastRotated, liveBytes,
                          Clock::to_time_t(now), settings_.retention)) {
            std::error_code error;
            std::filesystem::remove(file.path, error);
            if (error && !std::exchange(isRetentionRefused_, true)) {
                reportToStderr(backend_,
                               "cannot remove " + file.path.u8string() + ": " + error.message());
            }
        }
    } catch (...) {
        // There is no memory. The next rotation removes them.
    }
}

} // namespace ZOL::Backends
