#pragma once

/// Gives this process a view of its own of what is mounted where; throws std::system_error if the
/// machine does not allow it.
void leaveTheMachinesMounts();

/// Mounts an empty file system in memory on a folder that is there.
void mountMemory(const char* folder, const char* options);
