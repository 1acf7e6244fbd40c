#include "files/LogFile.h"

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "FileErrors.h"
#include "ReopeningSink.h"
#include "linux/Descriptors.h"

namespace ZOL::Backends {

namespace {

constexpr mode_t defaultMode = 0640;
/// Of attempts to open a file that others create and delete meanwhile.
constexpr int maxAttempts = 10;

int openDescriptor(const std::filesystem::path& path, std::optional<unsigned> mode) {
    // Without O_NONBLOCK, opening a FIFO would wait for its other end.
    constexpr int flags = O_WRONLY | O_APPEND | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;
    for (int attempt = 1;; ++attempt) {
        int descriptor = open(path.c_str(), flags);
        if (descriptor == -1 && errno == ENOENT) {
            descriptor = open(path.c_str(), flags | O_CREAT | O_EXCL, mode.value_or(defaultMode));
            if (descriptor != -1 && mode) {
                fchmod(descriptor, *mode); // regardless of the umask
            }
        }
        descriptor = aboveStandardStreams(descriptor);
        if (descriptor != -1) {
            return descriptor;
        }
        const bool hasChanged = errno == EEXIST || errno == EINTR;
        if (!hasChanged || attempt == maxAttempts) {
            throwOpenError(path, errno);
        }
    }
}

/// Whether a file ends within a line. Unknown, and taken for no, if it cannot be read.
bool endsWithinLine(const std::filesystem::path& path, off_t size) {
    if (size == 0) {
        return false;
    }
    const int descriptor =
        aboveStandardStreams(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (descriptor == -1) {
        return false;
    }
    char last = '\n';
    const ssize_t count = pread(descriptor, &last, 1, size - 1);
    close(descriptor);
    return count == 1 && last != '\n';
}

/// As write of the C library, which is a cancellation point besides: that costs time with each
/// line, and a thread that is cancelled there would tear its line and those that are kept.
ssize_t writeOnce(int descriptor, std::string_view bytes) {
    return syscall(SYS_write, descriptor, bytes.data(), bytes.size());
}

} // namespace

LogFile::LogFile(std::filesystem::path path, std::optional<unsigned> mode)
    : path_(std::move(path)), handle_(openDescriptor(path_, mode)) {
    struct stat status = {};
    const bool isKnown = fstat(static_cast<int>(handle_), &status) == 0;
    const char* const kind = isKnown ? otherKind(status.st_mode) : "of an unknown kind";
    if (kind != nullptr) {
        close(static_cast<int>(handle_));
        throwOtherKind(path_, kind);
    }
    identity_ = {status.st_dev, status.st_ino};
    size_ = static_cast<std::uint64_t>(status.st_size);
    isTorn_ = endsWithinLine(path_, status.st_size);
}

LogFile::~LogFile() {
    if (isOpen()) {
        close(static_cast<int>(handle_));
    }
}

bool LogFile::isOpen() const noexcept {
    struct stat status = {};
    return fstat(static_cast<int>(handle_), &status) == 0 &&
           identity_ == Identity{status.st_dev, status.st_ino};
}

void LogFile::appendFrom(std::string_view& lines) {
    endTornLine();
    write(lines);
}

void LogFile::endTornLine() {
    if (isTorn_) {
        std::string_view lineEnd = platformLineEnd;
        write(lineEnd);
    }
}

void LogFile::write(std::string_view& bytes) {
    while (!bytes.empty()) {
        const ssize_t count = writeOnce(static_cast<int>(handle_), bytes);
        if (count >= 0) {
            const auto written = static_cast<std::size_t>(count);
            size_ += written;
            isTorn_ = written == 0 ? isTorn_ : bytes[written - 1] != '\n';
            bytes.remove_prefix(written);
        } else if (errno != EINTR) {
            throwFileError("write to", path_, errno);
        }
    }
}

std::uint64_t LogFile::currentSize() const noexcept {
    struct stat status = {};
    return fstat(static_cast<int>(handle_), &status) == 0
               ? static_cast<std::uint64_t>(status.st_size)
               : size_;
}

void LogFile::refreshSize() noexcept {
    struct stat status = {};
    if (fstat(static_cast<int>(handle_), &status) == 0) {
        const auto size = static_cast<std::uint64_t>(status.st_size);
        if (size < size_) { // truncated by somebody else, perhaps within a line
            isTorn_ = endsWithinLine(path_, status.st_size);
        }
        size_ = size;
    }
}

bool LogFile::isAtItsPath() const noexcept {
    struct stat status = {};
    return lstat(path_.c_str(), &status) == 0 &&
           identity_ == Identity{status.st_dev, status.st_ino} && isOpen();
}

bool LogFile::isDeletionHidden() noexcept {
    return false;
}

std::chrono::system_clock::time_point LogFile::lastWrite() const noexcept {
    struct stat status = {};
    if (fstat(static_cast<int>(handle_), &status) != 0) {
        return std::chrono::system_clock::now();
    }
    return std::chrono::system_clock::from_time_t(status.st_mtim.tv_sec);
}

} // namespace ZOL::Backends
