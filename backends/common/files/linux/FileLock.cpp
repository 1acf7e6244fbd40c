#include "files/FileLock.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <pthread.h>
#include <sys/file.h>
#include <unistd.h>

#include "files/LogFile.h"
#include "linux/Descriptors.h"

namespace ZOL::Backends {

namespace {

constexpr int noDescriptor = -1;
constexpr mode_t lockMode = 0640;

/// Of a plug-in: that of its back end, and another one while its settings change. More of them in a
/// test are not closed in a child process.
constexpr std::size_t maxLocks = 32;

struct Slot {
    std::atomic<bool> isUsed = false;
    std::atomic<int> descriptor = noDescriptor;
};

std::array<Slot, maxLocks> slots;

/// A child process shares its parent's locks until it closes them. It may run no other code:
/// another thread of the parent may have held any mutex.
void closeInChild() {
    for (Slot& slot : slots) {
        const int descriptor = slot.descriptor.exchange(noDescriptor);
        if (descriptor != noDescriptor) {
            close(descriptor);
        }
    }
}

std::size_t takeSlot(int descriptor) noexcept {
    static const int registered = pthread_atfork(nullptr, nullptr, closeInChild);
    static_cast<void>(registered);
    for (std::size_t i = 0; i < maxLocks; ++i) {
        if (!slots[i].isUsed.exchange(true)) {
            slots[i].descriptor = descriptor;
            return i;
        }
    }
    return maxLocks;
}

} // namespace

std::unique_ptr<FileLock> FileLock::tryLock(const std::filesystem::path& log) {
    std::filesystem::path path = log;
    path += ".lock";
    const int descriptor = aboveStandardStreams(
        open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY,
             lockMode));
    if (descriptor == -1) {
        throw LogFileError("cannot open " + path.string() + ": " +
                           std::generic_category().message(errno));
    }
    if (flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        const int error = errno;
        close(descriptor);
        if (error == EWOULDBLOCK) {
            return nullptr;
        }
        throw LogFileError("cannot lock " + path.string() + ": " +
                           std::generic_category().message(error));
    }
    try {
        return std::unique_ptr<FileLock>(new FileLock(descriptor));
    } catch (...) {
        close(descriptor);
        throw;
    }
}

FileLock::FileLock(std::intptr_t handle) noexcept
    : handle_(handle), slot_(takeSlot(static_cast<int>(handle))) {}

FileLock::~FileLock() {
    if (slot_ == maxLocks) {
        close(static_cast<int>(handle_));
        return;
    }
    const int descriptor = slots[slot_].descriptor.exchange(noDescriptor);
    if (descriptor != noDescriptor) {
        close(descriptor);
    }
    slots[slot_].isUsed = false;
}

bool FileLock::isHeld() const noexcept {
    return slot_ == maxLocks || slots[slot_].descriptor != noDescriptor;
}

} // namespace ZOL::Backends
