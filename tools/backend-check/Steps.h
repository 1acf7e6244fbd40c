#pragma once

#include "Trial.h"

namespace backendcheck {

// What is tried, one after the other. The first three return whether it makes sense to go on.

bool loadsLibrary(Trial& trial);
bool createsBackend(Trial& trial);
bool installs(Trial& trial);
void tryReentrancy(Trial& trial);
void tryChannels(Trial& trial);
void tryNames(Trial& trial);
void tryTexts(Trial& trial);
void tryLevels(Trial& trial);
void tryThreads(Trial& trial);
void measureTime(Trial& trial);
void lookForLeaks(Trial& trial);
void tryUninstallation(Trial& trial);
void tryWaitingMessages(Trial& trial);

} // namespace backendcheck
