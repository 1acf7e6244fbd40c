#include "files/RotatingLog.h"

#include <utility>

#include "Diagnostics.h"
#include "ScopedSignalBlock.h"
#include "files/Rename.h"

namespace ZOL::Backends {

namespace {

using namespace std::chrono_literals;

/// From one look at the path to the next: how long lines may go to a file that has been moved.
constexpr RotatingLog::Clock::duration checkInterval = 200ms;
/// From one attempt to open or to rename to the next.
constexpr RotatingLog::Clock::duration retryInterval = 1s;

} // namespace

RotatingLog::RotatingLog(std::string backend, RotatingLogSettings settings)
    : backend_(std::move(backend)), settings_(std::move(settings)) {}

void RotatingLog::write(std::string_view line, Clock::time_point now) {
    if (file_ == nullptr || isPast(lastCheck_, checkInterval, now)) {
        check(now);
    }
    rotateIfDue(line.size(), now);
    try {
        file_->append(line);
    } catch (const LogFileError&) {
        if (file_->isAtItsPath()) {
            throw;
        }
        check(now); // the host has closed the descriptor
        file_->append(line);
    }
}

/// Whether a wait is over. A clock that was set back ends it as well.
bool RotatingLog::isPast(Clock::time_point moment, Clock::duration wait, Clock::time_point now) {
    return now < moment || now - moment >= wait;
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

bool RotatingLog::isFull(std::size_t lineBytes) const noexcept {
    return settings_.maxBytes != 0 && file_->size() != 0 &&
           file_->size() + lineBytes > settings_.maxBytes;
}

bool RotatingLog::isPeriodOver(Clock::time_point now) const noexcept {
    return settings_.clock && now >= periodEnd_;
}

void RotatingLog::rotateIfDue(std::size_t lineBytes, Clock::time_point now) {
    if (settings_.clock && now < periodBegin_) {
        startPeriod(now); // the clock has been set back
    }
    if (isPeriodOver(now) && file_->size() == 0) {
        startPeriod(now);
    }
    if ((isPeriodOver(now) || isFull(lineBytes)) &&
        (!isRotationRefused_ || isPast(lastRefusal_, retryInterval, now))) {
        rotate(now);
    }
}

void RotatingLog::rotate(Clock::time_point now) {
    takeLock();
    if (lock_ != nullptr && !lock_->isHeld()) {
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
        const std::error_code error = renameWithoutReplacing(settings_.path, name);
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
    if (lock_ != nullptr && !lock_->isHeld()) {
        return; // the parent of this process does it
    }
    if (!settings_.retention.isAny()) {
        return;
    }
    try {
        const std::uint64_t liveBytes =
            settings_.maxBytes != 0 ? settings_.maxBytes : file_->size();
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
