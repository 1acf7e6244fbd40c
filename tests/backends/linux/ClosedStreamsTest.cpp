// The back ends in a process that has closed its standard streams, as a daemon may do.

#include <filesystem>
#include <functional>
#include <set>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "FreshFolder.h"
#include "ListeningSocket.h"
#include "Property.h"
#include "RotatedFiles.h"
#include "linux/PrivateMounts.h"

using namespace ZOL::Framework::GenericLogger;
namespace fs = std::filesystem;

namespace {

constexpr int standardStreams = 3;

/// Closes the standard streams during its lifetime.
class ClosedStandardStreams {
public:
    ClosedStandardStreams() {
        for (int stream = 0; stream < standardStreams; ++stream) {
            saved_[stream] = fcntl(stream, F_DUPFD_CLOEXEC, standardStreams);
            close(stream);
        }
    }
    ClosedStandardStreams(const ClosedStandardStreams&) = delete;
    ClosedStandardStreams& operator=(const ClosedStandardStreams&) = delete;
    ~ClosedStandardStreams() {
        for (int stream = 0; stream < standardStreams; ++stream) {
            dup2(saved_[stream], stream);
            close(saved_[stream]);
        }
    }

private:
    int saved_[standardStreams] = {};
};

std::set<int> openDescriptors() {
    std::set<int> descriptors;
    for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
        descriptors.insert(std::stoi(entry.path().filename().string()));
    }
    std::set<int> open; // without that of the iteration itself
    for (const int descriptor : descriptors) {
        if (fcntl(descriptor, F_GETFD) != -1) {
            open.insert(descriptor);
        }
    }
    return open;
}

/// Runs the action with closed standard streams. It opens that number of descriptors, which must be
/// above those of the standard streams and closed on exec. Then prints to the standard streams.
void expectApartFromStandardStreams(std::size_t count, const std::function<void()>& action) {
    std::set<int> opened;
    std::string printed;
    {
        const ClosedStandardStreams closed;
        const std::set<int> start = openDescriptors();
        action();
        for (const int descriptor : openDescriptors()) {
            if (start.count(descriptor) == 0) {
                opened.insert(descriptor);
            }
        }
        for (int stream = 0; stream < standardStreams; ++stream) {
            printed += write(stream, "printed", 7) == -1 ? "" : std::to_string(stream);
        }
    }
    EXPECT_EQ(printed, "") << "is an open stream";
    EXPECT_EQ(opened.size(), count);
    for (const int descriptor : opened) {
        EXPECT_GE(descriptor, standardStreams);
        EXPECT_EQ(fcntl(descriptor, F_GETFD), FD_CLOEXEC);
    }
}

void install(const char* backend) {
    Logger::installBackend(backend);
    Logger::getLogger("orders")->info("x");
}

TEST(ClosedStreams, AreNoPartOfRotatingFile) {
    inFreshFolder([] {
        setProperty("RotatingFile.pattern", "%v");
        setProperty("RotatingFile.size", "20");
        expectApartFromStandardStreams(2, [] { // the file and its lock
            install("RotatingFile");
            Logger::getLogger("orders")->info("after a rotation");
        });
        EXPECT_EQ(rotatedTexts("zol.log"), std::vector<std::string>{"INFO [orders] x\n"});
        EXPECT_EQ(textOf("zol.log"), "INFO [orders] after a rotation\n");
    });
}

TEST(ClosedStreams, AreNoPartOfDailyFile) {
    inFreshFolder([] {
        setProperty("DailyFile.pattern", "%v");
        expectApartFromStandardStreams(2, [] { install("DailyFile"); });
        EXPECT_EQ(textOf("zol.log"), "INFO [orders] x\n");
    });
}

TEST(ClosedStreams, AreNoPartOfSystemLog) {
    inFreshFolder([] {
        support::leaveTheMachinesMounts();
        support::mountMemory("/dev", "size=1m");
        const ListeningSocket log("/dev/log");
        expectApartFromStandardStreams(1, [] { install("SystemLog"); });
        EXPECT_NE(log.receive().find("INFO [orders] x"), std::string::npos);
    });
}

TEST(ClosedStreams, AreNoPartOfDebugOutput) {
    inFreshFolder([] {
        support::leaveTheMachinesMounts();
        support::mountMemory("/run", "size=1m");
        fs::create_directories("/run/systemd/journal");
        const ListeningSocket journal("/run/systemd/journal/socket");
        expectApartFromStandardStreams(1, [] { install("DebugOutput"); });
        EXPECT_NE(journal.receive().find("INFO [orders] x"), std::string::npos);
    });
}

TEST(ClosedStreams, AreNoPartOfConsole) {
    inFreshFolder([] { expectApartFromStandardStreams(0, [] { install("Console"); }); });
}

TEST(ClosedStreams, DiscardReports) {
    inFreshFolder([] {
        setProperty("RotatingFile.size", "none");
        expectApartFromStandardStreams(2, [] { install("RotatingFile"); });
    });
}

} // namespace
