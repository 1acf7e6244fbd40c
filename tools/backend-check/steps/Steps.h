#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "live/CheckSession.h"
#include "live/ThisProcess.h"

namespace backendcheck {

/// Recorded as the action when main returns. Handlers that are called after those of the plug-in
/// record others.
inline constexpr const char* endOfProcess =
    "the end of the process: its static destructors and atexit handlers";

// The steps in their order. Those that return false make the next ones impossible.

bool loadsLibrary(CheckSession& session);
bool createsBackend(CheckSession& session);
void tryTwice(CheckSession& session);
bool installs(CheckSession& session);
void tryReentrancy(CheckSession& session);
void tryChannels(CheckSession& session);
/// Makes a back end count as slow before the checks that call it often.
void measureNewLoggers(CheckSession& session);
void tryNames(CheckSession& session);
void tryTexts(CheckSession& session);
void tryLevels(CheckSession& session);
void tryThreads(CheckSession& session);
void measureTime(CheckSession& session);
void lookForLeaks(CheckSession& session);
void tryUninstallation(CheckSession& session);
void tryWaitingMessages(CheckSession& session);
void lookForFreedMemory(CheckSession& session);

std::vector<HostSetting> readHostSettings();
void compareHostSettings(CheckSession& session, const std::vector<HostSetting>& before);

/// A library that was loaded, or why it could not be.
struct LoadedLibrary {
    std::filesystem::path file; // where createBackend is; empty if it could not be loaded
    std::vector<std::string> missingLibraries; // Linux: the first one
    std::vector<std::string> missingSymbols;
    std::string error; // any other reason, as the loader reports it
};

/// Loads a plug-in by its bare file name, as hosts do. Exceptions of its static initialisers come
/// out, where the platform lets them.
LoadedLibrary loadPlugin(const std::filesystem::path& file);

} // namespace backendcheck
