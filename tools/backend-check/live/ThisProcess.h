#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace backendcheck {

// The system's side of the process that loads the plug-in.

/// Limits what the process can take from the machine, and suppresses dialogs.
void limitThisProcess();

/// The platform's part of handleCrashes: signals or exceptions.
void installCrashHandlers();

/// Ends the process at once, without destructors and handlers.
[[noreturn]] void endNow(int code);

// What it uses.

std::size_t usedMemory(); // bytes
std::size_t openHandles();
std::size_t runningThreads();

/// A setting of the whole process.
struct HostSetting {
    std::string name;
    std::string value;
    bool isFatal = false; // a change breaks hosts
};

/// Those that only this platform has, in the same order at every call.
std::vector<HostSetting> platformSettings();

// Whole pages, for texts with guarded ends. Throw std::bad_alloc.

std::size_t pageSize();
char* newPages(std::size_t size);
void makeReadOnly(char* pages, std::size_t size);
void makeUnreadable(char* pages, std::size_t size);

} // namespace backendcheck
