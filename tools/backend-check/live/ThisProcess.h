#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace backendcheck {

// The system's side of the process that loads the plug-in.

/// Limits what the process can take from the machine, and suppresses dialogs.
void limitThisProcess();

/// The platform's part of handleCrashes: signals or exceptions.
void installCrashHandlers();

/// Has the handler called when the process ends: after the handlers and destructors that are
/// registered later, and before the destructors of the framework. To be called once.
/// @param handler returns false if the plug-in ends the process. On Linux, no destructors are
/// called
///     then: with the logging lock held, that of Boost's mutex fails in a debug build.
void atProcessEnd(bool (*handler)());

/// Has the handler called after the static objects of a module have been destroyed. Windows only:
/// on Linux that is before the handler of atProcessEnd.
void afterDestructorsOf(const std::filesystem::path& file, void (*handler)());

/// Ends the process at once, without destructors and handlers.
[[noreturn]] void endNow(int code);

// What it uses.

std::size_t usedMemory(); // bytes
std::size_t openHandles();
std::size_t runningThreads();

/// A setting of the whole process.
struct HostSetting {
    std::string name;
    std::string value;       // for people; may be empty
    bool isFatal = false;    // a change breaks hosts
    std::string detail = {}; // compared, but not shown
    const char* group = "";  // what the report calls all settings of this kind; name if empty
};

/// Those that only this platform has, in the same order at every call.
std::vector<HostSetting> platformSettings();

// Whole pages, for texts with guarded ends. Throw std::bad_alloc.

std::size_t pageSize();
char* newPages(std::size_t size);
void makeReadOnly(char* pages, std::size_t size);
void makeUnreadable(char* pages, std::size_t size);

/// Reserves addresses for which there is no memory. Does nothing if they are in use.
void reserveUnreadable(void* address, std::size_t size);

} // namespace backendcheck
