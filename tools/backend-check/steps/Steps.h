#pragma once

#include <vector>

#include "live/CheckSession.h"
#include "live/ThisProcess.h"

namespace backendcheck {

// What is tried, one after the other. The first three return whether it makes sense to go on.

inline constexpr const char* endOfProcess =
    "the end of the process: its static destructors and atexit handlers";

/// What the process that loads the plug-in does: runs every step and writes the findings to the
/// record.
int tryPlugin(const Options& options);

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
