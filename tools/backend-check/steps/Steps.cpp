#include "steps/Steps.h"

#include <array>
#include <cstdlib>
#include <filesystem>

#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/Management/PropertyManager.h"

#include "Checks.h"
#include "Text.h"
#include "live/CrashHandler.h"
#include "live/Heap.h"
#include "live/ThisProcess.h"

namespace backendcheck {

using ZOL::Framework::Framework;
using ZOL::Framework::Management::WideString;

namespace {

CheckSession* sessionAtExit = nullptr;
int exitLoggers = 0;

void logWhileEnding() {
    CheckSession& session = *sessionAtExit;
    session.beginCheck("exit");
    session.beginStep("log while the process ends: the plug-in's static objects are destroyed by "
                      "then, and what loggers use must not be among them");
    try {
        session.logger()->error("while the process ends");
        session.beginStep("createChannel while the process ends: the plug-in's static objects are "
                          "destroyed by then, and the back end must not be among them");
        session.logger(".at.exit" + std::to_string(++exitLoggers))->error("a new logger");
        session.beginStep("the rest of the process's end");
    } catch (...) {
        session.report(Result::Wrong,
                       describeCurrentException() + " came out of log while the process ends");
    }
}

/// Returns false, without a message, if the plug-in ends the process.
bool logAtExit() {
    const bool isDone = sessionAtExit->isDone();
    if (isDone) {
        logWhileEnding();
    }
    return isDone;
}

void logAfterDestructors() {
    (void)logAtExit();
}

void setProperties(const Options& options) {
    for (const auto& [name, value] : options.properties) {
        Framework::propertyManager()->setProperty(wideOf<WideString>(name),
                                                  wideOf<WideString>(value));
    }
}

void tryMessages(CheckSession& session) {
    using Step = void (*)(CheckSession&);
    constexpr std::array<std::pair<const char*, Step>, 9> steps = {
        {{"names", &tryNames},
         {"texts", &tryTexts},
         {"levels", &tryLevels},
         {"time", &measureTime},
         {"leaks", &lookForLeaks},
         {"threads", &tryThreads},
         {"uninstall", &tryUninstallation},
         {"waiting", &tryWaitingMessages},
         {"heap", &lookForFreedMemory}}};
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
    auto& record = *new CheckRecord(std::filesystem::u8path(options.record));
    auto& session = *new CheckSession(options, record);
    limitThisProcess();
    handleCrashes(record);
    keepFreedBlocks();
    std::filesystem::current_path(std::filesystem::u8path(options.workFolder));
    setProperties(options);

    // Registered before the plug-in is loaded, and called after the handlers of the plug-in.
    (void)session.logger();
    sessionAtExit = &session;
    atProcessEnd(&logAtExit);

    const std::vector<HostSetting> before = readHostSettings();
    const bool isCreated = loadsLibrary(session) && createsBackend(session);
    if (isCreated && session.isWanted("twice")) {
        tryTwice(session);
    }
    if (!isCreated || !installs(session)) {
        record.quit();
        endNow(exitWrong);
    }
    afterDestructorsOf(std::filesystem::u8path(options.file), &logAfterDestructors);
    tryReentrancy(session);
    tryChannels(session);
    if (session.isWanted("time")) {
        session.beginCheck("time");
        measureNewLoggers(session);
    }
    tryMessages(session);
    compareHostSettings(session, before);
    if (!session.hasThrown()) {
        session.report("exceptions", Result::Ok, "no exception came out of the calls above");
    }
    session.done();
    session.beginCheck("exit");
    session.beginStep(endOfProcess);
    return exitGood;
}

} // namespace backendcheck
