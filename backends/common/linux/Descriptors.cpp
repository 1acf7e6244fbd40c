#include "Descriptors.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace ZOL::Backends {

int aboveStandardStreams(int descriptor) noexcept {
    if (descriptor == -1 || descriptor > STDERR_FILENO) {
        return descriptor;
    }
    const int moved = fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    const int error = errno;
    close(descriptor);
    errno = error;
    return moved;
}

} // namespace ZOL::Backends
