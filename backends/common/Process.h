#pragma once

#include <string>

namespace ZOL::Backends {

/// The name of the program, without its folder and ".exe". A word, see escapedWord.
std::string programName();

/// The number of this process.
unsigned long processId();

/// The name of this machine. A word, see escapedWord.
std::string hostName();

/// How often this process and those before it have forked, as children. A number that differs from
/// an earlier one tells that this is a child, without the threads of its parent.
unsigned forkCount() noexcept;

/// Whether the process ends and all other threads have been killed, perhaps with locks in their
/// hands. Never on Linux.
bool areOtherThreadsGone() noexcept;

/// Waits until threads that have just been killed are really gone: Wine lets them finish what they
/// do in the system. At once on Linux.
void waitForKilledThreads() noexcept;

/// Keeps the module that contains this code loaded until the process ends. False if that is
/// refused.
bool keepModuleLoaded() noexcept;

/// Lets the C runtimes of the process call a function when the host returns from main or calls
/// exit: on Windows all threads still run then, and are killed before the static objects of
/// modules are destroyed. On Linux, where these do as well, nothing is called. The module must stay
/// loaded.
void callAtExit(void (*function)()) noexcept;

} // namespace ZOL::Backends
