#include "StandardError.h"

#include <atomic>
#include <cerrno>
#include <system_error>

#include <spdlog/details/os.h>
#include <unistd.h>

#include "ScopedSignalBlock.h"

namespace ZOL::Backends {

namespace {

constexpr const char* standardError = "standard error";

/// Whether the last text was written only in part.
std::atomic<bool> isLineTorn = false;

/// Writes until all is written. Returns the number of bytes written; errno says why it is fewer.
std::size_t writeAll(std::string_view text) {
    ScopedSignalBlock signalBlock(signalsOf(STDERR_FILENO));
    std::size_t written = 0;
    while (written < text.size()) {
        const ssize_t size = ::write(STDERR_FILENO, text.data() + written, text.size() - written);
        if (size > 0) {
            written += static_cast<std::size_t>(size);
        } else if (size == 0 || errno != EINTR) {
            break;
        }
    }
    if (written < text.size() && (errno == EPIPE || errno == EFBIG)) {
        const int error = errno;
        signalBlock.writeFailed();
        errno = error;
    }
    return written;
}

} // namespace

void writeToStandardError(std::string_view text) {
    const bool wasLineTorn = isLineTorn.exchange(false);
    std::string onNewLine;
    if (wasLineTorn) {
        onNewLine.append("\n").append(text);
        text = onNewLine;
    }
    errno = 0;
    const std::size_t written = writeAll(text);
    if (written == text.size()) {
        return;
    }
    const int error = errno;
    isLineTorn = wasLineTorn || written > 0;
    throw std::system_error(error, std::generic_category(), standardError);
}

void writeToStandardError(const ColouredText& text) {
    writeToStandardError(withEscapeCodes(text));
}

bool standardErrorHasColours() {
    return isatty(STDERR_FILENO) == 1 && spdlog::details::os::is_color_terminal();
}

} // namespace ZOL::Backends
