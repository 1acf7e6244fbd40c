#include <stdexcept>

#include "FreshProcess.h"
#include "LoadedModule.h"
#include "OutOfMemory.h"

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "ZOL/Framework/GenericLogger/LoggerBackendLoadError.h"
#include "ZOL/Gadgets/DLL/DLLHolder.h"

using support::inFreshProcess;
using support::longText;
using namespace ZOL::Framework::GenericLogger;

namespace {

constexpr const char* plugin = "AllocatingBackend";

class BackendLoadingOutOfMemory : public support::OutOfMemory {
protected:
    static void expectLockFree() {
        onAnotherThread([] { Logger::getLogger("another thread's"); });
    }
};
ZOL_INSTANTIATE_OUT_OF_MEMORY(BackendLoadingOutOfMemory);

TEST_P(BackendLoadingOutOfMemory, ALoadThatFailsLeavesNothingOrTheLibraryLoaded) {
    inFreshProcess([this] {
        LoggerBackend* backend = nullptr;
        std::size_t failuresBefore = 0;
        std::size_t failuresInThePlugin = 0;
        for (bool failed = true; failed;) {
            const Outcome outcome = attempt(failuresBefore + failuresInThePlugin + 1,
                                            [&] { backend = Logger::loadBackend(plugin); });
            EXPECT_EQ(outcome.threwBadAlloc, outcome.failed);
            failed = outcome.failed;
            const bool loaded = support::isLoaded(plugin, "");
            EXPECT_EQ(outcome.blocksLeft, loaded ? 1 : 0) << "the holder stays with the library";
            expectLockFree();
            failuresBefore += failed && !loaded ? 1U : 0U;
            failuresInThePlugin += failed && loaded ? 1U : 0U;
        }
        EXPECT_GE(failuresBefore, 2U) << "the holder and the file name";
        EXPECT_EQ(failuresInThePlugin, 2U) << "what its entry point asks for";
        EXPECT_NE(backend, nullptr);
        EXPECT_EQ(Logger::loadBackend(plugin), backend);
    });
}

TEST_P(BackendLoadingOutOfMemory, ALibraryThatIsMissingGivesBadAllocInPlaceOfItsError) {
    const std::string missing = "NoSuchPluginAsThisOne";
    std::size_t refused = 0;
    EXPECT_GE(sweep(
                  [&] {
                      try {
                          Logger::loadBackend(missing.c_str());
                      } catch (const std::runtime_error& error) {
                          refused += std::string(error.what())
                                                 .rfind("Unable to resolve function createBackend "
                                                        "from dynamic library\nExpression",
                                                        0) == 0
                                         ? 1U
                                         : 0U;
                      }
                  },
                  [] { expectLockFree(); }, anyNumber),
              4U);
    EXPECT_EQ(refused, 1U) << "never with half of its details";
}

TEST_P(BackendLoadingOutOfMemory, AnInstallationByNameFailsWithNothingInstalledOrInTheRefresh) {
    inFreshProcess([this] {
        LoggerBackend* const backend = Logger::loadBackend(plugin);
        Logger::installBackend(backend); // the list has storage from now on
        Logger::uninstallBackend(backend);
        Logger::getLogger(longText);
        std::string installedAfterFailure;
        for (bool failed = true; failed;) {
            LoggerBackend* result = nullptr;
            const Outcome outcome = attempt(installedAfterFailure.size() + 1,
                                            [&] { result = Logger::installBackend(plugin); });
            EXPECT_EQ(outcome.threwBadAlloc, outcome.failed);
            failed = outcome.failed;
            EXPECT_EQ(result, failed ? nullptr : backend);
            bool installed = false;
            onAnotherThread([&] {
                try {
                    Logger::installBackend(backend);
                } catch (const LoggerBackendLoadError&) {
                    installed = true;
                }
            });
            Logger::uninstallBackend(backend);
            if (failed) {
                installedAfterFailure += installed ? 'i' : '-';
            } else {
                EXPECT_TRUE(installed);
            }
        }
        // One logger is refreshed, which takes one copy of the list.
        ASSERT_GE(installedAfterFailure.size(), 5U);
        EXPECT_EQ(installedAfterFailure, std::string(installedAfterFailure.size() - 1, '-') + 'i');
    });
}

} // namespace
