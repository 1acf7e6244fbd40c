#include "ZOL/Platform/CrisisLogFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace ZOL::Platform {

const char* const crisisLogPath = "/var/log/zol.log";

std::FILE* openCrisisLogFile() {
    constexpr mode_t readableByAll = 0644;
    const int descriptor =
        open(crisisLogPath, O_RDWR | O_APPEND | O_CREAT | O_CLOEXEC, readableByAll);
    if (descriptor == -1) {
        return nullptr;
    }
    // flock, not fcntl: fcntl locks do not exclude a second open in the same process.
    std::FILE* const file =
        flock(descriptor, LOCK_EX | LOCK_NB) == 0 ? fdopen(descriptor, "a+") : nullptr;
    if (file == nullptr) {
        close(descriptor);
    }
    return file;
}

} // namespace ZOL::Platform
