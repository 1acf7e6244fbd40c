#include "TrialProcess.h"

#include <array>
#include <cstdlib>
#include <filesystem>

#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/Management/PropertyManager.h"

#include "Child.h"
#include "CrashWatch.h"
#include "ExitCode.h"
#include "HostState.h"
#include "Steps.h"
#include "Thrown.h"

namespace backendcheck {

using ZOL::Framework::Framework;
using ZOL::Framework::Management::WideString;

namespace {

Trial* trialAtExit = nullptr;

void logAtExit() {
    Trial& trial = *trialAtExit;
    if (!trial.isDone()) {
        return; // the plug-in has called exit
    }
    trial.at("exit", "log while the process ends: the plug-in's static objects are destroyed by "
                     "then, and what loggers use must not be among them");
    try {
        trial.logger()->error("while the process ends");
        trial.at("exit", "createChannel while the process ends: the plug-in's static objects are "
                         "destroyed by then, and the back end must not be among them");
        trial.logger(".at.exit")->error("a new logger while the process ends");
        trial.at("exit", "the rest of the process's end");
    } catch (...) {
        trial.find("exit", Result::Wrong,
                   thrownException() + " came out of log while the process ends");
    }
}

void setProperties(const Options& options) {
    for (const auto& [name, value] : options.properties) {
        Framework::propertyManager()->setProperty(WideString(name.begin(), name.end()),
                                                  WideString(value.begin(), value.end()));
    }
}

void compareHost(Trial& trial, const std::vector<HostTrait>& before) {
    trial.at("host", "looking at what it changed");
    const std::vector<HostTrait> after = hostState();
    Result result = Result::Ok;
    std::string text;
    for (std::size_t i = 0; i < before.size() && i < after.size(); ++i) {
        if (before[i].value == after[i].value) {
            continue;
        }
        text += text.empty() ? "it changed " : "\nit changed ";
        text += before[i].what;
        constexpr std::size_t longest = 60;
        if (before[i].value.size() + after[i].value.size() < longest) {
            text += " from " + before[i].value + " to " + after[i].value;
        }
        if (before[i].isGrave) {
            result = Result::Wrong;
        } else if (result == Result::Ok) {
            result = Result::Note;
        }
    }
    trial.find("host", result,
               result == Result::Ok
                   ? "it leaves locale, folder, streams, signals and the like alone"
                   : text + "\nthat belongs to the host");
}

void tryMessages(Trial& trial) {
    // By the check that each makes; the first also tells whether the back end serves anybody.
    const std::array<std::pair<const char*, void (*)(Trial&)>, 8> steps = {
        {{"names", &tryNames},
         {"texts", &tryTexts},
         {"levels", &tryLevels},
         {"threads", &tryThreads},
         {"time", &measureTime},
         {"leaks", &lookForLeaks},
         {"uninstall", &tryUninstallation},
         {"waiting", &tryWaitingMessages}}};
    for (const auto& [check, step] : steps) {
        if (trial.isWanted(check)) {
            step(trial);
        }
    }
}

} // namespace

int tryPlugin(const Options& options) {
    // Never destroyed: used until the very end.
    auto& journal = *new Journal(options.journal);
    auto& trial = *new Trial(options, journal);
    limitThisProcess();
    watchForCrashes(journal);
    std::filesystem::current_path(options.workFolder);
    setProperties(options);

    // Before the plug-in comes, so that it runs after what the plug-in has for that moment.
    (void)trial.logger();
    trialAtExit = &trial;
    std::atexit(&logAtExit);

    const std::vector<HostTrait> before = hostState();
    if (!loadsLibrary(trial) || !createsBackend(trial) || !installs(trial)) {
        journal.quit();
        endNow(exitWrong);
    }
    tryReentrancy(trial);
    tryChannels(trial);
    tryMessages(trial);
    compareHost(trial, before);
    if (!trial.hasThrown()) {
        trial.find("exceptions", Result::Ok, "no exception came out of it");
    }
    trial.done();
    trial.at("exit", endOfProcess);
    return exitGood;
}

} // namespace backendcheck
