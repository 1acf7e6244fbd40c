#include "linux/Descriptors.h"

#include <cerrno>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

using ZOL::Backends::aboveStandardStreams;

namespace {

TEST(Descriptors, AreMovedAboveTheStandardStreams) {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        const int saved = fcntl(stream, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
        const int moved = aboveStandardStreams(stream);
        const bool isClosed = fcntl(stream, F_GETFD) == -1;
        dup2(saved, stream);
        close(saved);
        EXPECT_TRUE(isClosed);
        EXPECT_GT(moved, STDERR_FILENO);
        EXPECT_EQ(fcntl(moved, F_GETFD), FD_CLOEXEC);
        close(moved);
    }
}

TEST(Descriptors, AboveTheStandardStreamsAreKept) {
    const int descriptor = open("/dev/null", O_WRONLY | O_CLOEXEC);
    EXPECT_EQ(aboveStandardStreams(descriptor), descriptor);
    EXPECT_EQ(fcntl(descriptor, F_GETFD), FD_CLOEXEC);
    close(descriptor);
}

TEST(Descriptors, OfAFailedCallKeepItsError) {
    errno = EMFILE;
    EXPECT_EQ(aboveStandardStreams(-1), -1);
    EXPECT_EQ(errno, EMFILE);
}

} // namespace
