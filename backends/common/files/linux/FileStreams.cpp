#include "files/FileStreams.h"

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "FileErrors.h"
#include "linux/Descriptors.h"

namespace ZOL::Backends {

namespace {

constexpr std::intptr_t noDescriptor = -1;
constexpr mode_t permissions = 0777;
// Without O_NONBLOCK, opening a FIFO would wait for its other end.
constexpr int commonFlags = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;

int descriptorOf(std::intptr_t handle) {
    return static_cast<int>(handle);
}

struct stat statusOf(std::intptr_t handle, const std::filesystem::path& path) {
    struct stat status = {};
    if (fstat(descriptorOf(handle), &status) != 0) {
        throwFileError("read", path, errno);
    }
    return status;
}

/// What the system call returns, which is repeated if a signal interrupts it.
template <typename Call>
auto uninterrupted(const Call& call) {
    for (;;) {
        const auto result = call();
        if (result != -1 || errno != EINTR) {
            return result;
        }
    }
}

int openForReading(const std::filesystem::path& path) {
    const int descriptor = aboveStandardStreams(
        uninterrupted([&path] { return open(path.c_str(), O_RDONLY | commonFlags); }));
    if (descriptor == -1) {
        throwOpenError(path, errno);
    }
    struct stat status = {};
    const bool isKnown = fstat(descriptor, &status) == 0;
    if (const char* const kind = isKnown ? otherKind(status.st_mode) : "of an unknown kind") {
        close(descriptor);
        throwOtherKind(path, kind);
    }
    return descriptor;
}

int create(const std::filesystem::path& path, mode_t mode) {
    const int created = uninterrupted(
        [&] { return open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | commonFlags, mode); });
    if (created == -1) {
        throwFileError("create", path, errno);
    }
    const int descriptor = aboveStandardStreams(created);
    if (descriptor == -1) {
        const int error = errno;
        unlink(path.c_str());
        throwFileError("create", path, error);
    }
    fchmod(descriptor, mode); // regardless of the umask
    return descriptor;
}

} // namespace

InputFile::InputFile(std::filesystem::path path)
    : path_(std::move(path)), handle_(openForReading(path_)) {}

InputFile::~InputFile() {
    close(descriptorOf(handle_));
}

std::size_t InputFile::readAt(std::uint64_t offset, unsigned char* bytes, std::size_t size) const {
    const ssize_t count = uninterrupted(
        [&] { return pread(descriptorOf(handle_), bytes, size, static_cast<off_t>(offset)); });
    if (count == -1) {
        throwFileError("read", path_, errno);
    }
    return static_cast<std::size_t>(count);
}

std::uint64_t InputFile::size() const {
    return static_cast<std::uint64_t>(statusOf(handle_, path_).st_size);
}

std::time_t InputFile::lastWrite() const {
    return statusOf(handle_, path_).st_mtim.tv_sec;
}

OutputFile::OutputFile(std::filesystem::path path, const InputFile& source)
    : path_(std::move(path)),
      source_(source),
      handle_(create(path_, statusOf(source.handle_, source.path_).st_mode & permissions)) {}

OutputFile::~OutputFile() {
    if (handle_ != noDescriptor) {
        close(descriptorOf(handle_));
    }
    if (!isComplete_) {
        unlink(path_.c_str());
    }
}

void OutputFile::write(const unsigned char* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t count =
            uninterrupted([&] { return ::write(descriptorOf(handle_), bytes, size); });
        if (count == -1) {
            throwFileError("write to", path_, errno);
        }
        bytes += count;
        size -= static_cast<std::size_t>(count);
    }
}

void OutputFile::complete() {
    const int descriptor = descriptorOf(handle_);
    timespec times[] = {{}, statusOf(source_.handle_, source_.path_).st_mtim};
    times[0].tv_nsec = UTIME_OMIT; // of the last access
    if (futimens(descriptor, times) != 0) {
        throwFileError("set the time of", path_, errno);
    }
    if (uninterrupted([descriptor] { return fsync(descriptor); }) != 0) {
        throwFileError("write to", path_, errno);
    }
    // It is closed in any case. Some network file systems report only here what failed.
    handle_ = noDescriptor;
    if (close(descriptor) != 0 && errno != EINTR) {
        throwFileError("write to", path_, errno);
    }
    isComplete_ = true;
}

} // namespace ZOL::Backends
