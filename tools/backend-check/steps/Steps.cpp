#include "steps/Steps.h"

#include <array>
#include <cstdlib>
#include <filesystem>

#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/Management/PropertyManager.h"

#include "Checks.h"
#include "live/CrashHandler.h"

namespace backendcheck {

using ZOL::Framework::Framework;
using ZOL::Framework::Management::WideString;

namespace {

CheckSession* sessionAtExit = nullptr;

void logAtExit() {
    CheckSession& session = *sessionAtExit;
    if (!session.isDone()) {
        return; // the plug-in has called exit
    }
    session.beginCheck("exit");
    session.beginStep("log while the process ends: the plug-in's static objects are destroyed by "
                      "then, and what loggers use must not be among them");
    try {
        session.logger()->error("while the process ends");
        session.beginStep("createChannel while the process ends: the plug-in's static objects are "
                          "destroyed by then, and the back end must not be among them");
        session.logger(".at.exit")->error("a new logger while the process ends");
        session.beginStep("the rest of the process's end");
    } catch (...) {
        session.report(Result::Wrong,
                       describeCurrentException() + " came out of log while the process ends");
    }
}

void setProperties(const Options& options) {
    for (const auto& [name, value] : options.properties) {
        Framework::propertyManager()->setProperty(WideString(name.begin(), name.end()),
                                                  WideString(value.begin(), value.end()));
    }
}

void tryMessages(CheckSession& session) {
    using Step = void (*)(CheckSession&);
    constexpr std::array<std::pair<const char*, Step>, 8> steps = {
        {{"names", &tryNames},
         {"texts", &tryTexts},
         {"levels", &tryLevels},
         {"threads", &tryThreads},
         {"time", &measureTime},
         {"leaks", &lookForLeaks},
         {"uninstall", &tryUninstallation},
         {"waiting", &tryWaitingMessages}}};
    for (const auto& [check, step] : steps) {
        if (session.isWanted(check)) {
            session.beginCheck(check);
            step(session);
        }
    }
}

} // namespace

int tryPlugin(const Options& options) {
    // Never destroyed: used until the process ends.
    auto& record = *new CheckRecord(options.record);
    auto& session = *new CheckSession(options, record);
    limitThisProcess();
    handleCrashes(record);
    std::filesystem::current_path(options.workFolder);
    setProperties(options);

    // Registered before the plug-in is loaded, and called after the handlers of the plug-in.
    (void)session.logger();
    sessionAtExit = &session;
    std::atexit(&logAtExit);

    const std::vector<HostSetting> before = readHostSettings();
    const bool isCreated = loadsLibrary(session) && createsBackend(session);
    if (isCreated && session.isWanted("twice")) {
        tryTwice(session);
    }
    if (!isCreated || !installs(session)) {
        record.quit();
        endNow(exitWrong);
    }
    tryReentrancy(session);
    tryChannels(session);
    tryMessages(session);
    compareHostSettings(session, before);
    if (!session.hasThrown()) {
        session.report("exceptions", Result::Ok, "no exception came out of it");
    }
    session.done();
    session.beginCheck("exit");
    session.beginStep(endOfProcess);
    return exitGood;
}

} // namespace backendcheck
