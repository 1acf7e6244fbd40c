// Every service of the framework works whenever code of a module or a program can run. The child
// programs exit with 0 only if all services worked, and write one line per moment to the crisis
// log.

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ChildProcess.h"
#include "CrisisLogSandbox.h"

using support::ChildProcess;
using support::CrisisLogSandbox;
using Moments = std::vector<std::string>;

namespace {

/// The messages of the crisis log's lines.
Moments momentsSeen() {
    Moments result;
    std::ifstream file(CrisisLogSandbox::path);
    for (std::string line; std::getline(file, line);) {
        result.push_back(line.substr(line.find(" - ") + 3));
    }
    return result;
}

/// What notifies a module of the end of a thread on this platform.
Moments threadEndNotifications() {
#if defined(_WIN32)
    return {"callback of a fiber's slot", "entry function"};
#else
    return {"destructor of a key", "thread_local destructor"};
#endif
}

TEST(LifetimeProbe, EveryServiceWorksInAModuleFromStaticInitialisersToStaticDestructors) {
    const CrisisLogSandbox place;
    ASSERT_EQ(ChildProcess({ChildProcess::program("LifetimeProbeHost"), "unload"}).wait(), 0);
    EXPECT_EQ(momentsSeen(),
              (Moments{"static initialiser", "main", "static destructor", "atexit handler"}));
}

TEST(LifetimeProbe, EveryServiceWorksInAModuleThatIsLoadedAtProcessExit) {
    const CrisisLogSandbox place;
    ASSERT_EQ(ChildProcess({ChildProcess::program("LifetimeProbeHost"), "exit"}).wait(), 0);
    EXPECT_EQ(momentsSeen(),
              (Moments{"static initialiser", "main", "static destructor", "atexit handler"}));
}

TEST(LifetimeProbe, EveryServiceWorksInAProgramBeforeAndAfterMain) {
    const CrisisLogSandbox place;
    ASSERT_EQ(ChildProcess({ChildProcess::program("LifetimeProbeProgram")}).wait(), 0);
    EXPECT_EQ(momentsSeen(),
              (Moments{"static initialiser", "main", "atexit handler", "static destructor"}));
}

TEST(LifetimeProbe, EveryServiceWorksOnAnEndingThread) {
    const CrisisLogSandbox place;
    ASSERT_EQ(ChildProcess({ChildProcess::program("LifetimeProbeHost"), "thread"}).wait(), 0);
    const Moments seen = momentsSeen();
    ASSERT_EQ(seen.size(), 6U);
    Moments ofThread(seen.begin() + 2, seen.begin() + 4);
    std::sort(ofThread.begin(), ofThread.end());
    EXPECT_EQ(ofThread, threadEndNotifications());
    EXPECT_EQ(Moments(seen.begin() + 4, seen.end()),
              (Moments{"static destructor", "atexit handler"}));
}

} // namespace
