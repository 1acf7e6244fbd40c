#include "CountingBackend.h"
#include "FreshProcess.h"
#include "OutOfMemory.h"

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackendLoadError.h"

using support::CountingBackend;
using support::inFreshProcess;
using support::Installed;
using support::longText;
using namespace ZOL::Framework::GenericLogger;

namespace {

class BackendInstallationOutOfMemory : public support::OutOfMemory {
protected:
    static bool isInstalled(CountingBackend& backend) {
        try {
            Logger::installBackend(&backend);
        } catch (const LoggerBackendLoadError&) {
            return true;
        }
        Logger::uninstallBackend(&backend);
        return false;
    }
};
ZOL_INSTANTIATE_OUT_OF_MEMORY(BackendInstallationOutOfMemory);

TEST_P(BackendInstallationOutOfMemory, AListThatCannotGrowStaysAsItIs) {
    inFreshProcess([this] { // where the list has no storage yet
        static CountingBackend backend;
        Logger* const logger = Logger::getLogger(longText);
        logger->info() << "waits";

        const Outcome outcome = attempt(1, [] { Logger::installBackend(&backend); });

        EXPECT_TRUE(outcome.threwBadAlloc);
        EXPECT_EQ(outcome.blocksLeft, 0);
        EXPECT_EQ(backend.asked, 0);
        EXPECT_EQ(backend.logged(), 0);
        onAnotherThread([] { EXPECT_FALSE(isInstalled(backend)); });
        EXPECT_EQ(backend.logged(), 1) << "the message still waited";
    });
}

TEST_P(BackendInstallationOutOfMemory, ARefreshThatFailsLeavesTheBackEndInstalledAndTheRestStale) {
    inFreshProcess([this] {
        static CountingBackend backend;
        constexpr int loggerCount = 3;
        for (const char* const name : {"a", "b", "c"}) {
            Logger::getLogger(name);
        }
        { // the list has storage from now on
            const Installed installed(backend);
        }
        std::size_t failures = 0;
        for (bool failed = true; failed;) {
            for (const char* const name : {"a", "b", "c"}) {
                Logger::getLogger(name)->info() << "waits";
            }
            const int asked = backend.asked;
            const int logged = backend.logged();
            const Outcome outcome = attempt(failures + 1, [] { Logger::installBackend(&backend); });
            EXPECT_EQ(outcome.threwBadAlloc, outcome.failed);
            const int askedFor = backend.asked - asked;
            const int delivered = backend.logged() - logged;
            failed = outcome.failed;
            if (failed) {
                ++failures;
                EXPECT_LT(delivered, loggerCount);
                EXPECT_EQ(delivered, askedFor) << "a logger that was asked for is done";
                EXPECT_EQ(delivered, static_cast<int>(failures) - 1) << "by name, one after other";
            } else {
                EXPECT_EQ(delivered, loggerCount);
            }
            // It is on the list, and the next installation of any back end completes the refresh.
            onAnotherThread(
                [] { EXPECT_THROW(Logger::installBackend(&backend), LoggerBackendLoadError); });
            static CountingBackend other;
            const Installed installed(other);
            EXPECT_EQ(backend.logged() - logged, loggerCount);
            Logger::uninstallBackend(&backend);
        }
        EXPECT_EQ(failures, 3U);
    });
}

TEST_P(BackendInstallationOutOfMemory, UninstallingNeedsNone) {
    static CountingBackend first;
    static CountingBackend second;
    const Installed firstInstalled(first);
    const Installed secondInstalled(second);
    EXPECT_EQ(allocationsOf([] { Logger::uninstallBackend(&first); }), 0U);
    EXPECT_EQ(allocationsOf([] { Logger::uninstallBackend(&first); }), 0U);
    EXPECT_TRUE(isInstalled(second));
}

} // namespace
