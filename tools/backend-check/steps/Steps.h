#pragma once

#include <vector>

#include "live/CheckSession.h"
#include "live/ThisProcess.h"

namespace backendcheck {

/// Recorded as the action when main returns. Handlers that are called after those of the plug-in
/// record others.
inline constexpr const char* endOfProcess =
    "the end of the process: its static destructors and atexit handlers";

/// What the child process does: runs all steps and writes the findings to the record.
int tryPlugin(const Options& options);

// The steps in their order. Those that return false make the next ones impossible.

bool loadsLibrary(CheckSession& session);
bool createsBackend(CheckSession& session);
void tryTwice(CheckSession& session);
bool installs(CheckSession& session);
void tryReentrancy(CheckSession& session);
void tryChannels(CheckSession& session);
void tryNames(CheckSession& session);
void tryTexts(CheckSession& session);
void tryLevels(CheckSession& session);
void tryThreads(CheckSession& session);
void measureTime(CheckSession& session);
void lookForLeaks(CheckSession& session);
void tryUninstallation(CheckSession& session);
void tryWaitingMessages(CheckSession& session);

std::vector<HostSetting> readHostSettings();
void compareHostSettings(CheckSession& session, const std::vector<HostSetting>& before);

} // namespace backendcheck
