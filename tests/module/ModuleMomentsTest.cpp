// Every service of the framework at every moment at which code of a module or a program runs. What
// runs there are other programs: they end with 0 only if all services did their work, and leave a
// line in the crisis log for each moment.

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

/// The ways by which a module hears of the end of a thread, which differ from platform to platform.
Moments waysToHearOfAThreadsEnd() {
#if defined(_WIN32)
    return {"callback of a fiber's slot", "entry function"};
#else
    return {"destructor of a key", "thread_local destructor"};
#endif
}

TEST(ModuleMoments, EveryServiceWorksInAModuleFromItsStaticInitialisersToItsStaticDestructors) {
    const CrisisLogSandbox place;
    ASSERT_EQ(ChildProcess({ChildProcess::program("MomentsHost"), "unload"}).wait(), 0);
    EXPECT_EQ(momentsSeen(),
              (Moments{"static initialiser", "main", "static destructor", "atexit handler"}));
}

TEST(ModuleMoments, EveryServiceWorksInAModuleThatIsStillThereWhenTheProcessEnds) {
    const CrisisLogSandbox place;
    ASSERT_EQ(ChildProcess({ChildProcess::program("MomentsHost"), "exit"}).wait(), 0);
    EXPECT_EQ(momentsSeen(),
              (Moments{"static initialiser", "main", "static destructor", "atexit handler"}));
}

TEST(ModuleMoments, EveryServiceWorksInAProgramBeforeMainAndBehindIt) {
    const CrisisLogSandbox place;
    ASSERT_EQ(ChildProcess({ChildProcess::program("MomentsProgram")}).wait(), 0);
    EXPECT_EQ(momentsSeen(),
              (Moments{"static initialiser", "main", "atexit handler", "static destructor"}));
}

TEST(ModuleMoments, EveryServiceWorksOnAThreadThatEnds) {
    const CrisisLogSandbox place;
    ASSERT_EQ(ChildProcess({ChildProcess::program("MomentsHost"), "thread"}).wait(), 0);
    const Moments seen = momentsSeen();
    ASSERT_EQ(seen.size(), 6U);
    Moments ofThread(seen.begin() + 2, seen.begin() + 4);
    std::sort(ofThread.begin(), ofThread.end());
    EXPECT_EQ(ofThread, waysToHearOfAThreadsEnd());
    EXPECT_EQ(Moments(seen.begin() + 4, seen.end()),
              (Moments{"static destructor", "atexit handler"}));
}

} // namespace
