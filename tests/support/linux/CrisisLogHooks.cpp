// Interposes functions of the C library: definitions in the program take precedence.

#include <atomic>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <iterator>

#include <dlfcn.h>
#include <fcntl.h>

#include "CrisisLogHooks.h"
#include "CrisisLogSandbox.h"

namespace CrisisLogHooks = support::CrisisLogHooks;
using CrisisLogHooks::Kind;

namespace {

// East of Greenwich, so that the local time is not the universal one.
constexpr const char* timeZone = "ZOL-3:30";
constexpr long secondsEastOfGreenwich = 3 * 3600 + 30 * 60;
constexpr long someMidnight = 20000L * 24 * 3600;

template <typename Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

/// The crisis log's stream.
std::atomic<FILE*> crisisStream = nullptr;

} // namespace

namespace support::CrisisLogHooks {

void attach() {
    setenv("TZ", timeZone, 1);
    tzset();
}

std::string content() {
    std::ifstream file(CrisisLogSandbox::path, std::ios_base::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace support::CrisisLogHooks

extern "C" [[gnu::visibility("default")]] int open(const char* file, int oflag, ...) {
    using Function = int(const char*, int, ...);
    static auto* const real = next<Function>("open");
    mode_t mode = 0;
    if ((oflag & O_CREAT) != 0) {
        va_list arguments;
        va_start(arguments, oflag);
        // The analyzer does not see va_start here.
        mode = va_arg(arguments, mode_t); // NOLINT(clang-analyzer-valist.Uninitialized)
        va_end(arguments);
        if (std::strcmp(file, support::CrisisLogSandbox::path) == 0) {
            CrisisLogHooks::report(Kind::Open);
        }
    }
    return real(file, oflag, mode);
}

extern "C" [[gnu::visibility("default")]] FILE* fdopen(int fd, const char* modes) noexcept {
    static auto* const real = next<FILE*(int, const char*)>("fdopen");
    if (CrisisLogHooks::fails(Kind::Open)) {
        return nullptr;
    }
    FILE* const stream = real(fd, modes);
    crisisStream = stream;
    return stream;
}

extern "C" [[gnu::visibility("default")]] int clock_gettime(clockid_t id, timespec* tp) noexcept {
    static auto* const real = next<int(clockid_t, timespec*)>("clock_gettime");
    const long time = id == CLOCK_REALTIME ? CrisisLogHooks::fixedTime() : -1;
    if (time < 0) {
        return real(id, tp);
    }
    CrisisLogHooks::report(Kind::Clock);
    tp->tv_sec = someMidnight + time / 1000 - secondsEastOfGreenwich;
    tp->tv_nsec = time % 1000 * 1000000 + 999999; // the very end of that millisecond
    return 0;
}

extern "C" [[gnu::visibility("default")]] std::size_t fwrite(const void* ptr, std::size_t size,
                                                             std::size_t n, FILE* s) {
    using Function = std::size_t(const void*, std::size_t, std::size_t, FILE*);
    static auto* const real = next<Function>("fwrite");
    if (s == crisisStream) {
        CrisisLogHooks::reportWrite(ptr, size, n);
        if (CrisisLogHooks::fails(Kind::Write)) {
            return 0;
        }
    }
    return real(ptr, size, n, s);
}

extern "C" [[gnu::visibility("default")]] int fflush(FILE* stream) {
    static auto* const real = next<int(FILE*)>("fflush");
    if (stream != nullptr && stream == crisisStream) {
        CrisisLogHooks::report(Kind::Flush);
        if (CrisisLogHooks::fails(Kind::Flush)) {
            return EOF;
        }
    }
    return real(stream);
}

extern "C" [[gnu::visibility("default")]] int fclose(FILE* stream) {
    static auto* const real = next<int(FILE*)>("fclose");
    if (stream == crisisStream) {
        CrisisLogHooks::report(Kind::Close);
        crisisStream = nullptr;
    }
    return real(stream);
}
